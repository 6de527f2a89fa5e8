#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include <tool/TempFile.h>
#include <tool/io/GzipMembers.h>
#include <tool/io/OpenScans.h>

namespace tests {
namespace {

std::optional<std::uint64_t> BytesBehind(const std::string& content) {
  const TempFile file("a.gz", content);
  return TslTool::GzipMembers(file.Path()).BytesBehind();
}

TEST(GzipMembers, AreUnpackedToTheLast) {
  EXPECT_EQ(BytesBehind(Gzip("1 2\n")), 0u);
  EXPECT_EQ(BytesBehind(Gzip("1 2\n") + Gzip("3 4\n") + Gzip("")), 0u);
  EXPECT_EQ(BytesBehind(Gzip(std::string(5'000'000, 'a')) + Gzip("b")), 0u);
}

TEST(GzipMembers, CountWhatFollowsThem) {
  EXPECT_EQ(BytesBehind(Gzip("1 2\n") + "garbage"), 7u);
  EXPECT_EQ(BytesBehind(Gzip("1 2\n") + "\x1f"), 1u);
  EXPECT_EQ(BytesBehind(Gzip("1 2\n") + std::string(1'000'000, 'x')), 1'000'000u);
  EXPECT_EQ(BytesBehind(Gzip("1 2\n") + std::string(512, '\0')), 0u);
}

TEST(GzipMembers, DamagedAndCutOnesAreNotWhole) {
  const std::string packed = Gzip("1 2\n3 4\n");
  for (std::size_t size = 2; size < packed.size(); ++size)
    EXPECT_EQ(BytesBehind(packed.substr(0, size)), std::nullopt) << size;
  std::string damaged = packed;
  damaged[damaged.size() - 6] ^= 1;
  EXPECT_EQ(BytesBehind(damaged), std::nullopt);
  EXPECT_EQ(BytesBehind(packed + damaged), std::nullopt);
}

TEST(GzipMembers, WhatFollowsThemIsTold) {
  for (const std::string name : {"a.txt.gz", "a.mzML.gz"}) {
    const TempFile file(name, Gzip(name == "a.txt.gz" ? "1 2\n" : "<mzML><run/></mzML>") + "garbage");
    const auto source = TslTool::OpenScans(file.Path());
    for (TslTool::Scan scan; source->Next(scan);) EXPECT_EQ(scan.mz.size(), 1u);
    EXPECT_THAT(source->Warnings(), testing::ElementsAre("7 bytes behind the gzip data not read"));
  }
}

}  // namespace
}  // namespace tests
