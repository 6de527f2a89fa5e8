#include <tool/EvaluateInOrder.h>

#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include <tool/Interrupt.h>
#include <tslbl/curve/ThreadingParams.h>
#include <exception>
#include <memory>

namespace TslTool {
namespace {

// A spectrum on its way.
struct Item {
  std::function<LoadedSpectrum()> load;
  SpectrumTexts texts;
  std::exception_ptr failure;
};
using ItemPtr = std::shared_ptr<Item>;

int Threads() {
  const TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  return tbb::task_arena(params.Auto ? tbb::task_arena::automatic : static_cast<int>(params.ThreadPoolSize))
      .max_concurrency();
}

// Runs `step`; a failure travels on with the item, as those before it are to be written first.
template <class Step>
void Try(Item& item, Step step) {
  try {
    step();
  } catch (...) {
    item.failure = std::current_exception();
  }
}

class Reader {
 public:
  explicit Reader(SpectrumSource& source) : source_(source) {}

  ItemPtr operator()(tbb::flow_control& control) {
    ThrowIfInterrupted();
    auto item = std::make_shared<Item>();
    if (!ended_) Try(*item, [&] { item->load = source_.Next(); });
    const bool none = ended_ || (!item->load && !item->failure);
    ended_ = none || item->failure;
    if (none) control.stop();
    return item;
  }

 private:
  SpectrumSource& source_;
  bool ended_ = false;
};

}  // namespace

std::uint64_t EvaluateInOrder(SpectrumSource& source,
                              const std::function<SpectrumTexts(LoadedSpectrum&)>& evaluate,
                              const std::function<void(const SpectrumTexts&)>& write) {
  std::uint64_t spectra = 0;
  Reader reader(source);
  const auto read = [&reader](tbb::flow_control& control) { return reader(control); };
  const auto work = [&](ItemPtr item) {
    if (item->failure) return item;
    Try(*item, [&] {
      LoadedSpectrum loaded = item->load();
      item->texts = evaluate(loaded);
    });
    item->load = nullptr;
    return item;
  };
  const auto finish = [&](const ItemPtr& item) {
    ThrowIfInterrupted();
    if (item->failure) std::rethrow_exception(item->failure);
    write(item->texts);
    ++spectra;
  };
  const int threads = Threads();
  tbb::task_arena(threads).execute([&] {
    using tbb::filter_mode;
    tbb::parallel_pipeline(static_cast<std::size_t>(2 * threads),
                           tbb::make_filter<void, ItemPtr>(filter_mode::serial_in_order, read) &
                               tbb::make_filter<ItemPtr, ItemPtr>(filter_mode::parallel, work) &
                               tbb::make_filter<ItemPtr, void>(filter_mode::serial_in_order, finish));
  });
  return spectra;
}

}  // namespace TslTool
