#include <tool/frame/Interrupt.h>

#include <cstdio>
#include <initializer_list>

#include <signal.h>

namespace TslTool {
namespace {

volatile sig_atomic_t asked = 0;  // the signal

extern "C" void OnSignal(int number) { asked = number; }

}  // namespace

void CatchInterrupts() {
  struct sigaction action = {};
  action.sa_handler = OnSignal;
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // and no SA_RESTART
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
  // A reader that has gone and a file that may not grow are failures to write like others.
  for (const int number : {SIGPIPE, SIGXFSZ}) signal(number, SIG_IGN);
}

bool WasInterrupted() { return asked != 0; }

void ThrowIfInterrupted() {
  if (WasInterrupted()) throw Interrupted();
}

void EndIfInterrupted() {
  if (!WasInterrupted()) return;
  std::fflush(nullptr);
  signal(asked, SIG_DFL);
  raise(asked);
}

}  // namespace TslTool
