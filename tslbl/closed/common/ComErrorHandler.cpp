#include <tslbl/closed/common/ComErrorHandler.h>

#include <tslbl/closed/common/ComponentRegistry.h>
#include <atomic>

namespace TslCommon {
namespace {

void ThrowComError(std::uint32_t code) { throw ComError{code}; }

std::atomic<ComErrorHandler> processHandler = ThrowComError;

}  // namespace

ComErrorHandler SetComErrorHandler(ComErrorHandler handler) {
  return processHandler.exchange(handler != nullptr ? handler : ThrowComError);
}

void RaiseComError(std::uint32_t code) { processHandler.load()(code); }

}  // namespace TslCommon
