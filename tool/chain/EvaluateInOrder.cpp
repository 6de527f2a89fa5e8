#include <tool/chain/EvaluateInOrder.h>

#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include <tool/frame/Interrupt.h>
#include <tslbl/detect/ThreadingParams.h>
#include <exception>
#include <vector>

namespace TslTool {
namespace {

// A spectrum in the pipeline.
struct Item {
  std::function<LoadedSpectrum()> load;
  SpectrumTexts texts;
  std::exception_ptr failure;
};

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

// Takes spectra from the source into a ring of as many items as may be in work. The pipeline
// only passes pointers: when a failure ends it, nothing that it holds is left without an owner.
class Reader {
 public:
  Reader(SpectrumSource& source, std::size_t inWork) : source_(source), items_(inWork) {}

  Item* operator()(tbb::flow_control& control) {
    ThrowIfInterrupted();
    Item& item = items_[next_++ % items_.size()];
    item = {};
    if (!ended_) Try(item, [&] { item.load = source_.Next(); });
    const bool none = ended_ || (!item.load && !item.failure);
    ended_ = none || item.failure;
    if (none) control.stop();
    return &item;
  }

 private:
  SpectrumSource& source_;
  std::vector<Item> items_;
  std::size_t next_ = 0;
  bool ended_ = false;
};

}  // namespace

std::uint64_t EvaluateInOrder(SpectrumSource& source,
                              const std::function<SpectrumTexts(LoadedSpectrum&)>& evaluate,
                              const std::function<void(const SpectrumTexts&)>& write) {
  std::uint64_t spectra = 0;
  const int threads = Threads();
  const std::size_t inWork = 2 * static_cast<std::size_t>(threads);
  Reader reader(source, inWork);
  const auto read = [&reader](tbb::flow_control& control) { return reader(control); };
  const auto work = [&](Item* item) {
    if (item->failure) return item;
    Try(*item, [&] {
      LoadedSpectrum loaded = item->load();
      item->texts = evaluate(loaded);
    });
    item->load = nullptr;
    return item;
  };
  const auto finish = [&](Item* item) {
    ThrowIfInterrupted();
    if (item->failure) std::rethrow_exception(item->failure);
    write(item->texts);
    ++spectra;
  };
  tbb::task_arena(threads).execute([&] {
    using tbb::filter_mode;
    tbb::parallel_pipeline(inWork, tbb::make_filter<void, Item*>(filter_mode::serial_in_order, read) &
                                       tbb::make_filter<Item*, Item*>(filter_mode::parallel, work) &
                                       tbb::make_filter<Item*, void>(filter_mode::serial_in_order, finish));
  });
  return spectra;
}

}  // namespace TslTool
