#include <tool/io/MzMLArray.h>

#include <tool/frame/Printable.h>
#include <tool/io/Base64.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <pwiz/data/common/cv.hpp>
#include <pwiz/data/msdata/MSNumpress.hpp>
#include <stdexcept>

namespace TslTool {

namespace {

namespace Numpress = pwiz::msdata::MSNumpress;

[[noreturn]] void Fail(const std::string& reason) { throw std::runtime_error(reason); }

template <class Number>
std::vector<double> Numbers(const std::string& bytes) {
  std::vector<double> values(bytes.size() / sizeof(Number));
  for (std::size_t i = 0; i < values.size(); ++i) {
    Number number;
    std::memcpy(&number, bytes.data() + i * sizeof(Number), sizeof(Number));
    values[i] = static_cast<double>(number);
  }
  return values;
}

struct NumberKind {
  const char* accession;
  std::size_t size;
  std::vector<double> (*decode)(const std::string&);
};
constexpr NumberKind kNumberKinds[] = {{"MS:1000519", 4, Numbers<std::int32_t>},
                                       {"MS:1000521", 4, Numbers<float>},
                                       {"MS:1000522", 8, Numbers<std::int64_t>},
                                       {"MS:1000523", 8, Numbers<double>}};

using NumpressDecoder = std::size_t (*)(const unsigned char*, std::size_t, double*);

struct Packing {
  const char* accession;
  bool isZlib;
  NumpressDecoder numpress;
};
constexpr Packing kPackings[] = {{"MS:1000576", false, nullptr},
                                 {"MS:1000574", true, nullptr},
                                 {"MS:1002312", false, Numpress::decodeLinear},
                                 {"MS:1002313", false, Numpress::decodePic},
                                 {"MS:1002314", false, Numpress::decodeSlof},
                                 {"MS:1002746", true, Numpress::decodeLinear},
                                 {"MS:1002747", true, Numpress::decodePic},
                                 {"MS:1002748", true, Numpress::decodeSlof}};

// How the bytes of an array become numbers.
struct ArrayForm {
  const NumberKind* numbers = nullptr;
  bool isZlib = false;
  NumpressDecoder numpress = nullptr;
};

bool IsKnownTerm(const std::string& accession) {
  try {
    return pwiz::cv::cvTermInfo(accession).cvid != pwiz::cv::CVID_Unknown;
  } catch (const std::exception&) {
    return false;
  }
}

// Some writers give zlib and Numpress as two terms.
void AddPacking(ArrayForm& form, const Packing& packing, const std::string& what) {
  form.isZlib = form.isZlib || packing.isZlib;
  if (!packing.numpress) return;
  if (form.numpress && form.numpress != packing.numpress)
    Fail("the " + what + " array is marked with two kinds of Numpress");
  form.numpress = packing.numpress;
}

ArrayForm FormOf(const MzMLTerms& terms, const std::string& what) {
  ArrayForm form;
  for (const MzMLTerm& term : terms) {
    const auto isTerm = [&](const auto& known) { return term.accession == known.accession; };
    const auto* kind = std::ranges::find_if(kNumberKinds, isTerm);
    const auto* packing = std::ranges::find_if(kPackings, isTerm);
    if (kind != std::end(kNumberKinds)) {
      if (form.numbers && form.numbers != kind)
        Fail("the " + what + " array is marked with two kinds of numbers");
      form.numbers = kind;
    } else if (packing != std::end(kPackings)) {
      AddPacking(form, *packing, what);
    } else if (!IsKnownTerm(term.accession)) {
      Fail("the " + what + " array has a term that is not known here: \"" + Printable(term.accession) + "\"");
    }
  }
  if (!form.numbers && !form.numpress)
    Fail("the " + what + " array does not tell 32 or 64 bit floats or integers");
  return form;
}

class Inflation {
 public:
  explicit Inflation(const std::string& packed) {
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream_.avail_in = static_cast<uInt>(packed.size());
    if (inflateInit(&stream_) != Z_OK) throw std::bad_alloc();
  }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;
  ~Inflation() { inflateEnd(&stream_); }

  // False if the data are damaged, cut or followed by others.
  bool Run(std::string& out, std::uint64_t most) {
    constexpr std::size_t kChunk = 64 * std::size_t{1024};
    int state = Z_OK;
    while (state == Z_OK && out.size() <= most) {
      const std::size_t old = out.size();
      out.resize(old + kChunk);
      stream_.next_out = reinterpret_cast<Bytef*>(out.data() + old);
      stream_.avail_out = kChunk;
      state = inflate(&stream_, Z_NO_FLUSH);
      out.resize(out.size() - stream_.avail_out);
    }
    return out.size() > most || (state == Z_STREAM_END && stream_.avail_in == 0);
  }

 private:
  z_stream stream_{};
};

// Stops soon behind what `points` can need, however much is packed.
std::string Inflated(const std::string& packed, std::uint64_t points, const std::string& what) {
  constexpr std::uint64_t kMost = std::uint64_t{1} << 32;
  std::string bytes;
  if (!Inflation(packed).Run(bytes, 8 * std::min(points, kMost) + 64))
    Fail("the zlib data of the " + what + " array are damaged");
  return bytes;
}

// On damaged data the decoder reads up to five bytes past them.
std::vector<double> FromNumpress(std::string bytes, NumpressDecoder decode, const std::string& what) {
  const std::size_t size = bytes.size();
  bytes.append(16, '\0');
  std::vector<double> values(2 * size + 8);
  try {
    const std::size_t count =
        decode(reinterpret_cast<const unsigned char*>(bytes.data()), size, values.data());
    if (count <= values.size()) {
      values.resize(count);
      return values;
    }
  } catch (...) {
    // It throws texts of its own, which would tell the user nothing.
  }
  Fail("the Numpress data of the " + what + " array are damaged");
}

std::vector<double> FromPlain(const std::string& bytes, const NumberKind& kind, const std::string& what) {
  if (bytes.size() % kind.size != 0)
    Fail("the " + what + " array has " + std::to_string(bytes.size()) + " bytes, no whole number of " +
         std::to_string(8 * kind.size) + " bit values");
  return kind.decode(bytes);
}

// Blanks may be counted or not. What the file does not announce is not wrong.
bool IsLengthTrue(const pugi::xml_node& array, const std::string& text) {
  if (!array.attribute("encodedLength")) return true;
  const std::string announced = array.attribute("encodedLength").value();
  const auto blanks = std::ranges::count_if(text, [](char c) { return std::strchr(" \t\r\n", c) && c; });
  return announced == std::to_string(text.size()) ||
         announced == std::to_string(text.size() - static_cast<std::size_t>(blanks));
}

std::string BytesOf(const std::string& text, const std::string& what) {
  try {
    return FromBase64(text);
  } catch (const std::runtime_error& error) {
    Fail("the base64 text of the " + what + " array " + error.what());
  }
}

// How many there are behind the announced ones is not counted.
[[noreturn]] void FailCount(std::size_t count, std::uint64_t points, const std::string& what) {
  const std::string found = count > points ? "more than the " : std::to_string(count) + " of the ";
  throw SpectrumDefect(kOtherLength,
                       "the " + what + " array has " + found + std::to_string(points) + " announced points");
}

}  // namespace

bool IsArrayForm(std::string_view accession) {
  const auto isTerm = [&](const auto& known) { return accession == known.accession; };
  return std::ranges::any_of(kNumberKinds, isTerm) || std::ranges::any_of(kPackings, isTerm);
}

MzMLArray DecodeArray(const pugi::xml_node& array, const MzMLTerms& terms, const std::string& what,
                      std::uint64_t points) {
  const ArrayForm form = FormOf(terms, what);
  const pugi::xml_node binary = ChildOf(array, "binary");
  if (!binary) Fail("the " + what + " array has no binary element");
  const std::string text = TextOf(binary);
  MzMLArray decoded;
  decoded.isLengthTrue = IsLengthTrue(array, text);
  // A wrong number of bytes shows in plain and zlib data, but not in these.
  if (form.numpress && !(array.attribute("encodedLength") && decoded.isLengthTrue))
    Fail("the base64 text of the " + what + " array has " + std::to_string(text.size()) +
         " characters, but its encodedLength is \"" + Printable(array.attribute("encodedLength").value()) +
         "\"");
  std::string bytes = BytesOf(text, what);
  if (form.isZlib) bytes = Inflated(bytes, points, what);
  decoded.values = form.numpress ? FromNumpress(std::move(bytes), form.numpress, what)
                                 : FromPlain(bytes, *form.numbers, what);
  if (decoded.values.size() != points) FailCount(decoded.values.size(), points, what);
  return decoded;
}

}  // namespace TslTool
