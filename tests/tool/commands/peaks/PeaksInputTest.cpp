// Standard input and output by their name "-".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::StartsWith;

constexpr const char* kText = "100 1\n100.1 500\n100.2 2\n100.3 1\n100.4 1\n";

std::string SmallMzML() { return MzML(PlainSpectrum("scan=1", {100, 100.1, 100.2, 100.3}, {1, 500, 2, 1})); }

// With the folder of `file` as the current one, in which it is named as it was made.
Outcome RunBeside(const TempFile& file, const std::string& script) {
  return RunShell("cd '" + file.Folder() + "' && " + script);
}

TEST(PeaksInput, StandardInputIsReadLikeAFile) {
  for (const std::string& content : {std::string(kText), SmallMzML(), Gzip(kText), Gzip(SmallMzML())}) {
    const TempFile file("in", content);
    const Outcome named = RunBeside(file, "\"$TSLBL\" peaks in --format tsv --quiet");
    ASSERT_EQ(named.status, 0) << named.err;
    for (const char* script : {"cat in | \"$TSLBL\" peaks - --format tsv --quiet",
                               "\"$TSLBL\" peaks - --format tsv --quiet < in"}) {
      const Outcome piped = RunBeside(file, script);
      EXPECT_EQ(piped.status, 0) << script << piped.err;
      EXPECT_EQ(piped.out, named.out) << script;
    }
  }
}

TEST(PeaksInput, StandardInputHasANameInMessages) {
  struct Case {
    const char* content;
    const char* script;
    const char* message;
  };
  for (const auto& [content, script, message] :
       {Case{"", "\"$TSLBL\" peaks - < in", "tslbl: standard input: the file is empty\n"},
        Case{"", "cat in | \"$TSLBL\" peaks -", "tslbl: standard input: the file is empty\n"},
        Case{"100 1\n101 x\n", "cat in | \"$TSLBL\" peaks -", "tslbl: standard input: line 2: "},
        Case{"", "\"$TSLBL\" peaks - <&-", "tslbl: standard input: is closed\n"},
        Case{kText, "(read first; \"$TSLBL\" peaks -) < in",
             "tslbl: standard input: was read in part before; give the name of the file\n"},
        Case{kText, "\"$TSLBL\" peaks - < in >/dev/null", "tslbl: standard input: --smooth "}}) {
    const Outcome outcome = RunBeside(TempFile("in", content), script);
    EXPECT_THAT(outcome.err, StartsWith(message)) << script;
  }
}

TEST(PeaksInput, ARunIsNotReadFromStandardInput) {
  const std::string run = DemoRun::Get().Run();
  const Outcome file = RunShell("\"$TSLBL\" peaks - < '" + run + "'");
  EXPECT_EQ(file.status, 1);
  EXPECT_EQ(file.err, "tslbl: standard input: a run is read from its file only; give the name of the file\n");
  const Outcome piped = RunShell("cat '" + run + "' | \"$TSLBL\" peaks -");
  EXPECT_EQ(piped.status, 1);
  EXPECT_EQ(piped.err,
            "tslbl: standard input: an SQLite file, as runs are, which is read by its name and not "
            "from a pipe\n");
}

TEST(PeaksInput, DataThatNobodyAskedForIsWrongUsage) {
  const TempFile file("in", kText);
  const TempFile empty("in", "");
  for (const char* script : {"\"$TSLBL\" peaks < in", "cat in | \"$TSLBL\" peaks",
                             "(sleep 1; cat in) | \"$TSLBL\" peaks", "\"$TSLBL\" peaks --show-chain < in"}) {
    const Outcome outcome = RunBeside(file, script);
    EXPECT_EQ(outcome.status, 2) << script;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "tslbl: standard input is a pipe or a file, and no INPUT is given; write - to read "
              "it, as in 'tslbl peaks -'\n");
  }
  for (const char* script : {"\"$TSLBL\" peaks --scan 1 -q < in", "\"$TSLBL\" peaks --scan 1 -q <&-",
                             "true | (sleep 0.2; \"$TSLBL\" peaks --scan 1 -q)"}) {
    const Outcome outcome = RunBeside(empty, script);
    EXPECT_EQ(outcome.status, 0) << script << outcome.err;
    EXPECT_EQ(outcome.err, "");
  }
}

TEST(PeaksInput, AnOutputNamedByADashIsStandardOutput) {
  const TempFile file("in", kText);
  const std::string table = RunBeside(file, "\"$TSLBL\" peaks in --format tsv -q").out;
  EXPECT_EQ(RunBeside(file, "\"$TSLBL\" peaks - --format tsv -q --output - < in").out, table);
  EXPECT_THAT(RunBeside(file, "\"$TSLBL\" peaks in -q -o table --curve -").out,
              StartsWith("scan\trt_s\tmz\t"));
  EXPECT_EQ(NamesIn(file.Folder()), (std::vector<std::string>{"in", "table"}));
}

TEST(PeaksInput, StandardOutputHasOneResultAndIsNotGoneOnWith) {
  const TempFile file("in", kText);
  for (const char* words : {"--curve -", "--curve - --output -", "--format tsv --resume --output -"})
    EXPECT_EQ(RunBeside(file, std::string("\"$TSLBL\" peaks in ") + words).status, 2) << words;
}

TEST(PeaksInput, IsNotWrittenOverThroughStandardInput) {
  const TempFile file("in", kText);
  const Outcome outcome = RunBeside(file, "\"$TSLBL\" peaks - -o in < in");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "tslbl: --output: in is the input\n");
  EXPECT_EQ(ReadFile(file.Path()), kText);
}

TEST(PeaksInput, IsNotWrittenOverByThePartOfATable) {
  const TempFile file("t.tsv.part", kText);
  const Outcome outcome = RunBeside(file, "\"$TSLBL\" peaks t.tsv.part --format tsv -o t.tsv");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "tslbl: --output: t.tsv.part is the input\n");
  EXPECT_EQ(ReadFile(file.Path()), kText);
}

}  // namespace
}  // namespace tests
