#include <tool/Interrupt.h>

#include <csignal>

namespace TslTool {
namespace {

volatile std::sig_atomic_t asked = 0;

extern "C" void OnSignal(int number) {
  asked = 1;
  std::signal(number, SIG_DFL);
}

}  // namespace

void CatchInterrupts() {
  std::signal(SIGINT, OnSignal);
  std::signal(SIGTERM, OnSignal);
}

void ThrowIfInterrupted() {
  if (asked != 0) throw Interrupted();
}

}  // namespace TslTool
