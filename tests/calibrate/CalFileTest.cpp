#include <RecordCheck.h>

#include <tslbl/calibrate/CalFile.h>
#include <filesystem>

using namespace TslBL;
using namespace tests;

namespace {

namespace fs = std::filesystem;

const std::vector<MZCalPt> kPoints = {{L"PEG 3", 151.0965, 3021.5}, {L"\x3b1", 997.75, 19955.25}};

// A folder for the length of a test.
class Folder {
 public:
  Folder() {
    path_ = fs::temp_directory_path() /
            ("tslbl-calfile-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
             ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(path_);
    fs::create_directories(path_);
  }
  ~Folder() { fs::remove_all(path_); }
  std::wstring File(const std::string& name) const { return (path_ / name).wstring(); }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::size_t Files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(path_), {}));
  }
  const fs::path& Path() const { return path_; }

 private:
  fs::path path_;
};

std::string FileBytes(const std::vector<MZCalPt>& points) {
  std::string bytes = Bytes(1u, static_cast<std::uint32_t>(points.size()));
  for (const MZCalPt& point : points) bytes += ToBytes(point);
  return bytes;
}

// What loading throws; empty if it throws nothing. The points stay either way.
std::string LoadFailure(const std::string& bytes) {
  const Folder folder;
  folder.Write("a.cal", bytes);
  std::vector<MZCalPt> points = {{L"before", 1, 2}};
  try {
    EXPECT_FALSE(LoadCalFile(folder.File("a.cal"), points));
  } catch (const std::runtime_error& e) {
    EXPECT_EQ(points, (std::vector<MZCalPt>{{L"before", 1, 2}}));
    return e.what();
  }
  EXPECT_EQ(points, (std::vector<MZCalPt>{{L"before", 1, 2}}));
  return "";
}

}  // namespace

TEST(CalFile, HoldsAVersionACountAndThePoints) {
  const Folder folder;
  EXPECT_TRUE(SaveCalFile(folder.File("a.cal"), kPoints));
  EXPECT_EQ(folder.Read("a.cal"), FileBytes(kPoints));
  EXPECT_TRUE(SaveCalFile(folder.File("empty.cal"), {}));
  EXPECT_EQ(folder.Read("empty.cal"), Bytes(1u, 0u));
  EXPECT_EQ(folder.Files(), 2u) << "nothing else is left";
}

TEST(CalFile, ReadsBackWhatItSaved) {
  const Folder folder;
  for (const auto& saved : {kPoints, std::vector<MZCalPt>()}) {
    ASSERT_TRUE(SaveCalFile(folder.File("a.cal"), saved));
    std::vector<MZCalPt> points = {{L"before", 1, 2}};
    EXPECT_TRUE(LoadCalFile(folder.File("a.cal"), points));
    EXPECT_EQ(points, saved);
  }
}

TEST(CalFile, ThatCannotBeReadIsNotLoaded) {
  const Folder folder;
  std::vector<MZCalPt> points = kPoints;
  EXPECT_FALSE(LoadCalFile(folder.File("missing.cal"), points));
  EXPECT_FALSE(LoadCalFile(folder.Path().wstring(), points));
  EXPECT_EQ(points, kPoints);
}

TEST(CalFile, OfAnotherVersionIsNotLoaded) {
  for (const std::uint32_t version : {0u, 2u, 16777216u})
    EXPECT_EQ(LoadFailure(Bytes(version) + FileBytes(kPoints).substr(4)), "");
  EXPECT_EQ(LoadFailure(""), "");
  EXPECT_EQ(LoadFailure("\x01"), "");
}

TEST(CalFile, CutShortAnywhereIsAnError) {
  const std::string whole = FileBytes(kPoints);
  for (std::size_t length = 4; length < whole.size(); ++length)
    EXPECT_NE(LoadFailure(whole.substr(0, length)), "") << length;
  EXPECT_EQ(LoadFailure(Bytes(1u)), "Unexpected end of stream.");
  EXPECT_NE(LoadFailure(Bytes(1u, 4294967295u) + whole.substr(8)), "") << "more points than there are";
}

TEST(CalFile, WithAPointOfAnotherVersionIsAnError) {
  std::string bytes = FileBytes(kPoints);
  bytes[8] = 77;
  EXPECT_EQ(LoadFailure(bytes), "Unknown MZCalPt version.");
}

TEST(CalFile, ThatCannotBeWrittenStaysAsItWas) {
  const Folder folder;
  EXPECT_FALSE(SaveCalFile(folder.File("no/such/folder.cal"), kPoints));
  EXPECT_FALSE(SaveCalFile(folder.Path().wstring(), kPoints));
  EXPECT_EQ(folder.Files(), 0u);
}
