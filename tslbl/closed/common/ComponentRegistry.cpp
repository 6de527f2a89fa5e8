#include <tslbl/closed/common/ComponentRegistry.h>

#include <utility>

namespace TslCommon {

IComponent::~IComponent() = default;

ComponentRegistry& ComponentRegistry::Instance() {
  static ComponentRegistry registry;
  return registry;
}

void ComponentRegistry::Register(const std::string& classId, Factory factory) {
  const std::lock_guard lock(mutex_);
  if (factory) {
    factories_[classId] = std::move(factory);
  } else {
    factories_.erase(classId);
  }
}

bool ComponentRegistry::IsRegistered(const std::string& classId) const {
  const std::lock_guard lock(mutex_);
  return factories_.contains(classId);
}

std::unique_ptr<IComponent> ComponentRegistry::Create(const std::string& classId) const {
  Factory factory;
  {
    const std::lock_guard lock(mutex_);
    const auto found = factories_.find(classId);
    if (found == factories_.end()) throw ComError{ComError::kNotRegistered};
    factory = found->second;
  }
  std::unique_ptr<IComponent> component = factory();
  if (!component) throw ComError{ComError::kNotRegistered};
  return component;
}

}  // namespace TslCommon
