#pragma once
// The exchangeable components, by class id: an application may put its own engine in the
// place of ours.
//
// The registry is process-wide and safe to use from several threads. A component made
// belongs to the caller.

#include <tslbl/Export.h>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace TslCommon {

// Base of every component interface; a caller casts to the interface that it needs.
class TSLBL_API IComponent {
 public:
  virtual ~IComponent();
};

// A component that cannot be made or used. Deliberately not a std::exception: it passes
// the handlers that turn a numeric failure into a message.
struct TSLBL_API ComError {
  std::uint32_t code;

  static constexpr std::uint32_t kNotRegistered = 0x80040154;
  static constexpr std::uint32_t kNoInterface = 0x80004002;
  static constexpr std::uint32_t kNullPointer = 0x80004003;
  static constexpr std::uint32_t kFailed = 0x80004005;
};

class TSLBL_API ComponentRegistry {
 public:
  using Factory = std::function<std::unique_ptr<IComponent>()>;

  // The registry of the process.
  static ComponentRegistry& Instance();

  // Replaces what was registered under the id; an empty factory takes it out.
  void Register(const std::string& classId, Factory factory);
  bool IsRegistered(const std::string& classId) const;

  // Throws ComError kNotRegistered, or what the factory throws.
  std::unique_ptr<IComponent> Create(const std::string& classId) const;

  // The same as interface T; throws ComError kNoInterface if the component is no T.
  template <class T>
  std::unique_ptr<T> CreateAs(const std::string& classId) const {
    std::unique_ptr<IComponent> component = Create(classId);
    T* wanted = dynamic_cast<T*>(component.get());
    if (wanted == nullptr) throw ComError{ComError::kNoInterface};
    static_cast<void>(component.release());  // `wanted` is the same object
    return std::unique_ptr<T>(wanted);
  }

 private:
  mutable std::mutex mutex_;
  std::map<std::string, Factory> factories_;
};

}  // namespace TslCommon
