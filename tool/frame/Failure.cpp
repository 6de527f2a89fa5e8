#include <tool/frame/Failure.h>

#include <tslbl/closed/common/ComponentRegistry.h>
#include <new>

namespace TslTool {

std::string FailureText(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::bad_alloc&) {
    return "out of memory";
  } catch (const std::exception& e) {
    return e.what();
  } catch (const TslCommon::ComError& e) {
    return "a component failed with code " + std::to_string(e.code);
  }
}

}  // namespace TslTool
