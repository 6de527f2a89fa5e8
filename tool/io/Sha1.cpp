#include <tool/io/Sha1.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>

#include <fstream>
#include <pwiz/utility/misc/SHA1Calculator.hpp>
#include <vector>

namespace TslTool {

struct Sha1::Impl {
  pwiz::util::SHA1Calculator calculator;
};

Sha1::Sha1() : impl_(std::make_unique<Impl>()) {}

Sha1::~Sha1() = default;

void Sha1::Add(std::string_view bytes) {
  impl_->calculator.update(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

std::string Sha1::Text() {
  impl_->calculator.close();
  return impl_->calculator.hash();
}

std::string Sha1OfFile(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::vector<char> chunk(256 * std::size_t{1024});
  Sha1 sum;
  while (in) {
    ThrowIfInterrupted();
    in.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
    sum.Add({chunk.data(), static_cast<std::size_t>(in.gcount())});
  }
  if (!in.eof()) throw InputError(file, "", "cannot be read a second time, for its checksum");
  return sum.Text();
}

}  // namespace TslTool
