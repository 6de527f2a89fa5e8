#include <tool/commands/method/TimeTable.h>

#include <fmt/format.h>

#include <tool/commands/method/MethodPlace.h>
#include <tool/frame/TimeText.h>

namespace TslTool {
namespace {

constexpr const char* kColumns[] = {"polarity", "settling", "steps", "counting", "in all"};

std::string Row(const std::string& name, const std::string& spectra, const ItemTimes& times) {
  return fmt::format("  {:<8} {:>7} {:>10.6g} {:>10.6g} {:>10.6g} {:>10.6g} {:>10.6g}\n", name, spectra,
                     times.polaritySwitch, times.initSettling, times.stepSettling, times.counting,
                     times.Total());
}

ItemTimes Sum(const PeriodTimes& period) {
  ItemTimes sum{};
  for (const ItemTimes& item : period.items) {
    sum.spectra += item.spectra;
    sum.polaritySwitch += item.polaritySwitch;
    sum.initSettling += item.initSettling;
    sum.stepSettling += item.stepSettling;
    sum.counting += item.counting;
  }
  return sum;
}

std::string Share(double part, double whole) {
  return fmt::format("{:>10}", whole > 0.0 ? fmt::format("{:.3g} %", 100.0 * part / whole) : "-");
}

std::string Head(std::size_t tp, const PeriodTimes& period) {
  const std::string length = period.isFree ? "without end" : ShownSeconds(period.length);
  const std::string first = period.polaritySwitch > 0.0 ? fmt::format(", after {} for the polarity",
                                                                      ShownSeconds(period.polaritySwitch))
                                                        : "";
  return fmt::format("{}  {}, {} {} of {}{}\n", PlaceName(tp), length, period.loops,
                     period.loops == 1 ? "loop" : "loops", ShownSeconds(period.loop), first);
}

// The last loop begins within the time period and may end behind it.
std::string Rest(const PeriodTimes& period) {
  const double beyond = period.polaritySwitch + period.loop * period.loops - period.length;
  if (period.isFree || !(beyond > 1e-9)) return "";
  return fmt::format("  the time period ends {} before its last loop does\n", ShownSeconds(beyond));
}

std::string Block(std::size_t tp, const PeriodTimes& period) {
  std::string text = Head(tp, period) + fmt::format("  {:<8} {:>7}", "seconds", "spectra");
  for (const char* column : kColumns) text += fmt::format(" {:>10}", column);
  text += '\n';
  for (const ItemTimes& item : period.items)
    text += Row(PlaceName(item.period, item.item), fmt::format("{}", item.spectra), item);
  const ItemTimes sum = Sum(period);
  text += Row("loop", fmt::format("{}", sum.spectra), sum);
  text += fmt::format("  {:<8} {:>7}", "share", "");
  for (const double part :
       {sum.polaritySwitch, sum.initSettling, sum.stepSettling, sum.counting, sum.Total()})
    text += " " + Share(part, sum.Total());
  return text + '\n' + Rest(period) + '\n';
}

}  // namespace

std::string TimeTable(const std::vector<PeriodTimes>& times) {
  std::string text;
  double whole = 0.0;
  bool isFree = false;
  for (std::size_t tp = 0; tp < times.size(); ++tp) {
    text += Block(tp, times[tp]);
    whole += times[tp].length;
    isFree |= times[tp].isFree;
  }
  return text + fmt::format("The method takes {}.\n", isFree ? "no end of time" : ShownSeconds(whole));
}

std::string TimeTsv(const std::vector<PeriodTimes>& times) {
  std::string text =
      "period\titem\tloops\tspectra\tswitch_s\tinit_settle_s\tstep_settle_s\tcount_s\titem_s\tloop_s\tperiod_"
      "s\n";
  for (const PeriodTimes& period : times)
    for (const ItemTimes& item : period.items)
      text += fmt::format("{}\t{}\t{}\t{}\t{:.9g}\t{:.9g}\t{:.9g}\t{:.9g}\t{:.9g}\t{:.9g}\t{}\n", item.period,
                          item.item, period.loops, item.spectra, item.polaritySwitch, item.initSettling,
                          item.stepSettling, item.counting, item.Total(), period.loop,
                          period.isFree ? "inf" : fmt::format("{}", period.length));
  return text;
}

}  // namespace TslTool
