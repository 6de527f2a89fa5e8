#include <tool/io/GzipMembers.h>

#include <algorithm>
#include <new>

namespace TslTool {

namespace {

constexpr std::size_t kChunk = 256 * std::size_t{1024};
constexpr int kGzipOnly = 16 + MAX_WBITS;
constexpr Bytef kMagic[] = {0x1f, 0x8b};

}  // namespace

GzipMembers::GzipMembers(const std::string& file)
    : in_(file, std::ios::binary), packed_(kChunk), unpacked_(kChunk) {
  if (inflateInit2(&stream_, kGzipOnly) != Z_OK) throw std::bad_alloc();
}

GzipMembers::~GzipMembers() { inflateEnd(&stream_); }

// Moves what is left to the front and reads on; false if there is no more.
bool GzipMembers::Fill() {
  std::copy_n(reinterpret_cast<const char*>(stream_.next_in), stream_.avail_in, packed_.data());
  in_.read(packed_.data() + stream_.avail_in, static_cast<std::streamsize>(kChunk - stream_.avail_in));
  stream_.next_in = reinterpret_cast<Bytef*>(packed_.data());
  stream_.avail_in += static_cast<uInt>(in_.gcount());
  return in_.gcount() > 0;
}

bool GzipMembers::IsAtMember() {
  if (stream_.avail_in < std::size(kMagic)) Fill();
  return stream_.avail_in >= std::size(kMagic) &&
         std::equal(std::begin(kMagic), std::end(kMagic), stream_.next_in);
}

bool GzipMembers::PassMember() {
  inflateReset(&stream_);
  for (int state = Z_OK; state != Z_STREAM_END;) {
    if (stream_.avail_in == 0 && !Fill()) return false;
    stream_.next_out = reinterpret_cast<Bytef*>(unpacked_.data());
    stream_.avail_out = kChunk;
    state = inflate(&stream_, Z_NO_FLUSH);
    if (state != Z_OK && state != Z_STREAM_END) return false;
  }
  return true;
}

std::uint64_t GzipMembers::CountRest() {
  std::uint64_t count = 0;
  bool isZeros = true;
  do {
    isZeros = isZeros && std::all_of(stream_.next_in, stream_.next_in + stream_.avail_in,
                                     [](Bytef byte) { return byte == 0; });
    count += stream_.avail_in;
    stream_.avail_in = 0;
  } while (Fill());
  return isZeros ? 0 : count;
}

std::optional<std::uint64_t> GzipMembers::BytesBehind() {
  stream_.next_in = reinterpret_cast<Bytef*>(packed_.data());
  while (IsAtMember())
    if (!PassMember()) return std::nullopt;
  return CountRest();
}

}  // namespace TslTool
