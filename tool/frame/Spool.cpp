#include <tool/frame/Spool.h>

#include <fmt/format.h>
#include <unistd.h>

#include <fcntl.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace TslTool {

Spool::Spool(const std::string& folder) : folder_(folder) {
  std::string name = folder + "/tslbl.XXXXXX";
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) Fail("made");
  unlink(name.c_str());
  file_.reset(fdopen(descriptor, "w+b"));
  if (!file_) Fail("made");
}

void Spool::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) Fail("written");
  size_ += text.size();
}

void Spool::ForEachLine(const std::function<void(std::string_view line)>& use) {
  if (std::fflush(file_.get()) != 0 || std::fseek(file_.get(), 0, SEEK_SET) != 0) Fail("written");
  char* line = nullptr;
  std::size_t room = 0;
  const auto free = [](char** held) { std::free(*held); };
  const std::unique_ptr<char*, decltype(free)> freed(&line, free);
  for (ssize_t length = 0; (length = getline(&line, &room, file_.get())) > 0;)
    use({line, static_cast<std::size_t>(length)});
  if (std::ferror(file_.get()) != 0) Fail("read");
}

void Spool::Fail(const char* what) const {
  throw std::runtime_error(
      fmt::format("{}: a temporary file cannot be {}: {}", folder_, what, std::strerror(errno)));
}

}  // namespace TslTool
