#include <tool/commands/peaks/ScansInstead.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/frame/Interrupt.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <set>
#include <vector>

namespace TslTool {
namespace {

// What the scans of an input have of one property by which they are chosen.
class Property {
 public:
  virtual ~Property() = default;
  virtual void Add(const Scan& scan) = 0;
  virtual std::string Text() const = 0;
};

class Numbers final : public Property {
 public:
  void Add(const Scan& scan) override {
    ++count_;
    first_ = std::min(first_, scan.number);
    last_ = std::max(last_, scan.number);
  }
  std::string Text() const override {
    if (count_ == 1) return fmt::format("its only scan is {}", first_);
    const bool haveNoGaps = last_ - first_ + std::uint64_t{1} == count_;
    if (haveNoGaps) return fmt::format("its scans are {} to {}", first_, last_);
    return fmt::format("it has {} scans from {} to {}", count_, first_, last_);
  }

 private:
  std::uint64_t count_ = 0;
  std::uint32_t first_ = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t last_ = 0;
};

class Times final : public Property {
 public:
  void Add(const Scan& scan) override {
    if (std::isnan(scan.rtSeconds)) return;
    from_ = std::min(from_, scan.rtSeconds);
    to_ = std::max(to_, scan.rtSeconds);
  }
  std::string Text() const override {
    if (from_ > to_) return "it tells no retention times";
    return fmt::format("its retention times are {:.3f} to {:.3f} s", from_, to_);
  }

 private:
  double from_ = std::numeric_limits<double>::infinity();
  double to_ = -std::numeric_limits<double>::infinity();
};

class Levels final : public Property {
 public:
  void Add(const Scan& scan) override {
    if (scan.msLevel != 0) levels_.insert(scan.msLevel);
  }
  std::string Text() const override {
    if (levels_.empty()) return "it tells no MS level";
    return fmt::format("its MS level{} {}", levels_.size() == 1 ? " is" : "s are", fmt::join(levels_, ", "));
  }

 private:
  std::set<int> levels_;
};

class Polarities final : public Property {
 public:
  void Add(const Scan& scan) override {
    if (scan.polarity != 0) polarity_ = scan.polarity;
  }
  // Of two, the one that is not wanted.
  std::string Text() const override {
    if (polarity_ == 0) return "it tells no polarity";
    return fmt::format("its polarity is {}", polarity_ > 0 ? "positive" : "negative");
  }

 private:
  int polarity_ = 0;
};

class Functions final : public Property {
 public:
  void Add(const Scan& scan) override {
    if (scan.function != 0) functions_.insert(scan.function);
  }
  std::string Text() const override {
    if (functions_.empty()) return "its ids count no functions";
    return fmt::format("its function{} {}", functions_.size() == 1 ? " is" : "s are",
                       fmt::join(functions_, ", "));
  }

 private:
  std::set<std::uint32_t> functions_;
};

struct Wish {
  ScanFilter filter;  // of one property alone
  std::unique_ptr<Property> property;
  bool isMet = false;
};

std::vector<Wish> WishesOf(const ScanFilter& all) {
  std::vector<Wish> wishes;
  const auto add = [&](const ScanFilter& one, std::unique_ptr<Property> property) {
    if (!one.WantsAll()) wishes.push_back({one, std::move(property)});
  };
  add({.numbers = all.numbers}, std::make_unique<Numbers>());
  add({.rtFrom = all.rtFrom, .rtTo = all.rtTo}, std::make_unique<Times>());
  add({.msLevel = all.msLevel}, std::make_unique<Levels>());
  add({.polarity = all.polarity}, std::make_unique<Polarities>());
  add({.function = all.function}, std::make_unique<Functions>());
  return wishes;
}

template <class Use>
void ForEachScanOfRun(const std::string& input, Use use) {
  RunReader reader(input);
  for (PackedScan packed; reader.Next(packed); ThrowIfInterrupted()) use(reader.HeadOf(packed));
}

template <class Use>
void ForEachScanOfDemonstration(Use use) {
  const auto source = OpenSpectra("", {});
  while (const auto load = source->Next()) {
    ThrowIfInterrupted();
    const LoadedSpectrum loaded = load();
    Scan scan;
    scan.number = loaded.scan;
    scan.rtSeconds = loaded.rtSeconds;
    scan.msLevel = loaded.msLevel;
    scan.polarity = loaded.polarity;
    use(scan);
  }
}

template <class Use>
void ForEachScan(const std::string& input, const ColumnChoice& columns, Use use) {
  if (input.empty()) return ForEachScanOfDemonstration(use);
  if (IsDatabase(input)) return ForEachScanOfRun(input, use);
  const auto source = OpenScans(input);
  source->SetFilter({.columns = columns});
  for (Scan scan; source->Next(scan); ThrowIfInterrupted()) use(scan);
}

}  // namespace

std::string ScansInstead(const std::string& input, const SpectrumChoice& wanted) {
  std::vector<Wish> wishes = WishesOf(wanted.filter);
  if (wishes.empty()) return "";
  bool isAny = false;
  ForEachScan(input, wanted.filter.columns, [&](const Scan& scan) {
    isAny = true;
    for (Wish& wish : wishes) {
      wish.property->Add(scan);
      wish.isMet = wish.isMet || wish.filter.Wants(scan);
    }
  });
  std::vector<std::string> texts;
  for (const Wish& wish : wishes)
    if (isAny && !wish.isMet) texts.push_back(wish.property->Text());
  return texts.empty() ? "" : fmt::format(": {}", fmt::join(texts, "; "));
}

}  // namespace TslTool
