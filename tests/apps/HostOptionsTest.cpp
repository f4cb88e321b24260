// The host's command line.
#include "apps/marnock-host/HostOptions.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

struct Parsed {
  std::optional<KT::HostOptions> options;
  int status = -1;
  std::string out;
  std::string err;
};

Parsed Parse(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "marnock-host");
  std::ostringstream out;
  std::ostringstream err;
  Parsed parsed;
  parsed.options = KT::ParseHostOptions(std::move(arguments), out, err, parsed.status);
  parsed.out = out.str();
  parsed.err = err.str();
  return parsed;
}

TEST(HostOptions, WithoutArgumentsNothingIsNamed) {
  const Parsed parsed = Parse({});
  ASSERT_TRUE(parsed.options.has_value());
  EXPECT_EQ(parsed.options->logFile, "");
  EXPECT_EQ(parsed.options->importFile, "");
  EXPECT_TRUE(parsed.options->recover);
}

TEST(HostOptions, MendingCanBeLeftOut) {
  const Parsed parsed = Parse({"--no-recover"});
  ASSERT_TRUE(parsed.options.has_value()) << parsed.err;
  EXPECT_FALSE(parsed.options->recover);
}

TEST(HostOptions, FilesAreTakenAsTheyAre) {
  const Parsed parsed = Parse({"--import", "/a b/\xc3\xa9.json", "--log=-x=y.log"});
  ASSERT_TRUE(parsed.options.has_value()) << parsed.err;
  EXPECT_EQ(parsed.options->importFile, "/a b/\xc3\xa9.json");
  EXPECT_EQ(parsed.options->logFile, "-x=y.log");
}

TEST(HostOptions, HelpIsPrintedAndEndsTheProgramWell) {
  const Parsed parsed = Parse({"--help"});
  EXPECT_FALSE(parsed.options.has_value());
  EXPECT_EQ(parsed.status, 0);
  EXPECT_NE(parsed.out.find("--import FILE"), std::string::npos) << parsed.out;
  EXPECT_NE(parsed.out.find("--log FILE"), std::string::npos) << parsed.out;
  EXPECT_EQ(parsed.err, "");
}

TEST(HostOptions, WhatIsWrongEndsTheProgramWithStatus2) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"--nonsense"}, {"surplus"}, {"--log"}, {"--log", "a", "--log", "b"}, {""}, {"/log", "a"}}) {
    const Parsed parsed = Parse(arguments);
    EXPECT_FALSE(parsed.options.has_value());
    EXPECT_EQ(parsed.status, 2);
    EXPECT_EQ(parsed.out, "");
    EXPECT_NE(parsed.err, "");
  }
}

}  // namespace
