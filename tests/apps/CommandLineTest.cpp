// marnockctl's command line.
#include "apps/marnockctl/CommandLine.h"

#include <gtest/gtest.h>

#include <sstream>

#include "apps/marnockctl/DeviceFamily.h"

namespace {

using KT::CurrentFamily;
using KT::ExitStatus;
using KT::TrustedFamily;

struct Parsed {
  std::optional<KT::Invocation> invocation;
  ExitStatus status = ExitStatus::ServiceFailed;
  std::string out;
  std::string err;
};

Parsed Parse(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "marnockctl");
  std::ostringstream out;
  std::ostringstream err;
  Parsed parsed;
  parsed.invocation = KT::ParseCommandLine(std::move(arguments), out, err, parsed.status);
  parsed.out = out.str();
  parsed.err = err.str();
  return parsed;
}

// The command that `arguments` ask for; a default one, and a fault of the test, when they ask for another.
template <class Command>
Command As(const std::vector<std::string>& arguments) {
  const Parsed parsed = Parse(arguments);
  if (!parsed.invocation.has_value() || !std::holds_alternative<Command>(parsed.invocation->command)) {
    ADD_FAILURE() << "another command, or none: " << parsed.err;
    return {};
  }
  return std::get<Command>(parsed.invocation->command);
}

template <class Family>
void ExpectDeviceCommands(const std::string& family) {
  const auto set = As<KT::DeviceSet<Family>>({family, "set", "key", "file.json"});
  EXPECT_EQ(set.sumId, "key");
  EXPECT_EQ(set.file, "file.json");
  EXPECT_TRUE(set.fields.empty());
  EXPECT_FALSE(set.force);
  EXPECT_EQ(As<KT::DeviceGet<Family>>({family, "get", "key"}).sumId, "key");
  As<KT::DeviceList<Family>>({family, "list"});
  EXPECT_EQ(As<KT::DeviceDelete<Family>>({family, "delete", "key"}).sumId, "key");
}

TEST(CommandLine, KnowsTheCommandsOfBothFamilies) {
  ExpectDeviceCommands<TrustedFamily>("trusted");
  ExpectDeviceCommands<CurrentFamily>("current");
}

TEST(CommandLine, KnowsThePeerCommands) {
  const auto set = As<KT::PeerSet>({"peer", "set", "u", "s"});
  EXPECT_EQ(set.udId, "u");
  EXPECT_EQ(set.sumId, "s");
  EXPECT_EQ(As<KT::PeerGet>({"peer", "get", "u"}).udId, "u");
  EXPECT_EQ(As<KT::PeerDelete>({"peer", "delete", "u"}).udId, "u");
}

TEST(CommandLine, TakesFieldsInTheirOrderAsTheyAre) {
  const auto set = As<KT::DeviceSet<TrustedFamily>>({"trusted", "set", "key", "-", "--field", "devName=a=b", "--force",
                                                     "--field", "macAddr=", "--field=x=[1,2]", "--field", "[a=b]"});
  EXPECT_EQ(set.file, "-");
  EXPECT_TRUE(set.force);
  EXPECT_EQ(set.fields, (std::vector<std::string>{"devName=a=b", "macAddr=", "x=[1,2]", "[a=b]"}));
}

TEST(CommandLine, TakesFieldsBeforeTheKey) {
  const auto set = As<KT::DeviceSet<CurrentFamily>>({"current", "set", "--field", "devName=a", "key"});
  EXPECT_EQ(set.sumId, "key");
  EXPECT_EQ(set.file, "");
  EXPECT_EQ(set.fields, std::vector<std::string>{"devName=a"});
}

TEST(CommandLine, GlobalOptionsHaveDefaults) {
  const Parsed parsed = Parse({"peer", "get", "u"});
  ASSERT_TRUE(parsed.invocation.has_value());
  EXPECT_EQ(parsed.invocation->options.timeout, std::chrono::milliseconds(5'000));
  EXPECT_EQ(parsed.invocation->options.pkgName, "marnockctl");
  EXPECT_FALSE(parsed.invocation->options.json);
}

TEST(CommandLine, GlobalOptionsAreTaken) {
  const Parsed parsed = Parse({"--timeout", "250", "--pkg", "p q", "--json", "trusted", "list"});
  ASSERT_TRUE(parsed.invocation.has_value()) << parsed.err;
  EXPECT_EQ(parsed.invocation->options.timeout, std::chrono::milliseconds(250));
  EXPECT_EQ(parsed.invocation->options.pkgName, "p q");
  EXPECT_TRUE(parsed.invocation->options.json);
}

TEST(CommandLine, TheTimeoutIsFrom1MillisecondToADay) {
  for (const char* const good : {"1", "86400000"}) {
    EXPECT_TRUE(Parse({"--timeout", good, "peer", "get", "u"}).invocation.has_value()) << good;
  }
  for (const char* const bad : {"0", "86400001", "-1", "x", "", "99999999999999999999"}) {
    EXPECT_EQ(Parse({"--timeout", bad, "peer", "get", "u"}).status, ExitStatus::WrongUse) << bad;
  }
}

TEST(CommandLine, ValuesAreTakenAsTheyAre) {
  for (const char* const value : {"", " ", "\xd0\xb6\xe4\xb8\xad\xf0\x9f\x98\x80", "\xff", "a\nb", "[a,b]", "/x", "'",
                                  "=", "-5", "-", "a b", "\"q\"", "%x", "{}"}) {
    EXPECT_EQ(As<KT::PeerSet>({"peer", "set", value, "s"}).udId, value);
    EXPECT_EQ(As<KT::PeerSet>({"peer", "set", "u", value}).sumId, value);
    EXPECT_EQ(As<KT::DeviceGet<TrustedFamily>>({"trusted", "get", value}).sumId, value);
    const Parsed parsed = Parse({"--pkg", value, "peer", "get", "u"});
    ASSERT_TRUE(parsed.invocation.has_value()) << value;
    EXPECT_EQ(parsed.invocation->options.pkgName, value);
  }
}

TEST(CommandLine, WordsOfTheToolCanBeValues) {
  for (const char* const word : {"peer", "set", "get", "list", "delete", "trusted", "current"}) {
    EXPECT_EQ(As<KT::PeerSet>({"peer", "set", word, word}).sumId, word);
    EXPECT_EQ(As<KT::DeviceGet<TrustedFamily>>({"trusted", "get", word}).sumId, word);
  }
}

TEST(CommandLine, ValuesWithALeadingDashFollowTwoDashes) {
  for (const char* const value : {"-x", "--json", "--", "--field=a", "-h"}) {
    EXPECT_EQ(Parse({"peer", "get", value}).invocation.has_value(), false) << value;
    EXPECT_EQ(As<KT::PeerGet>({"peer", "get", "--", value}).udId, value);
    const auto set = As<KT::PeerSet>({"peer", "set", "--", value, value});
    EXPECT_EQ(set.udId, value);
    EXPECT_EQ(set.sumId, value);
  }
}

TEST(CommandLine, HelpIsPrintedAndIsDone) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"--help"}, {"-h"}, {"trusted", "--help"}, {"peer", "set", "--help"}}) {
    const Parsed parsed = Parse(arguments);
    EXPECT_FALSE(parsed.invocation.has_value());
    EXPECT_EQ(parsed.status, ExitStatus::Done);
    EXPECT_NE(parsed.out.find("Usage: "), std::string::npos) << parsed.out;
    EXPECT_EQ(parsed.err, "");
  }
}

TEST(CommandLine, HelpNamesTheExitStatuses) {
  EXPECT_NE(Parse({"--help"})
                .out.find("Exit status: 0 done; 1 the service failed; 2 wrong command or input; 3 no "
                          "service or no answer in time; 4 not found."),
            std::string::npos);
}

TEST(CommandLine, WhatIsWrongIsToldAndSaysWrongUse) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{},
                                             {"nonsense"},
                                             {"trusted"},
                                             {"trusted", "nonsense"},
                                             {"trusted", "set"},
                                             {"trusted", "get"},
                                             {"trusted", "get", "a", "b"},
                                             {"trusted", "list", "surplus"},
                                             {"trusted", "delete"},
                                             {"trusted", "set", "a", "file", "surplus"},
                                             {"trusted", "set", "a", "--field"},
                                             {"trusted", "list", "--json"},
                                             {"current", "set"},
                                             {"peer"},
                                             {"peer", "list"},
                                             {"peer", "set", "u"},
                                             {"peer", "set", "u", "s", "t"},
                                             {"peer", "get"},
                                             {"peer", "delete"},
                                             {"peer", "get", "u", "trusted", "list"},
                                             {"--nonsense", "peer", "get", "u"},
                                             {"--timeout"},
                                             {"--pkg"},
                                             {"--timeout", "1", "--timeout", "2", "peer", "get", "u"}}) {
    const Parsed parsed = Parse(arguments);
    EXPECT_FALSE(parsed.invocation.has_value());
    EXPECT_EQ(parsed.status, ExitStatus::WrongUse);
    EXPECT_EQ(parsed.out, "");
    EXPECT_NE(parsed.err, "");
  }
}

}  // namespace
