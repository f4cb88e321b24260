// Which documents are taken, and what is said of the others.
#include "apps/json/JsonDocument.h"

#include <gtest/gtest.h>

#include "tests/apps/ExpectedError.h"

namespace {

using KT::Json;
using KT::ParseJson;
using support::ErrorOf;

TEST(ParseJson, KeepsTheOrderOfMembers) { EXPECT_EQ(ParseJson(R"({"b": 1, "a": [2]})").dump(), R"({"b":1,"a":[2]})"); }

TEST(ParseJson, NamesAMemberThatStandsTwiceInOneObject) {
  EXPECT_EQ(ErrorOf([] { ParseJson(R"({"a": 1, "b": 2, "a": 1})"); }), "the member \"a\" stands twice in one object");
  EXPECT_EQ(ErrorOf([] { ParseJson(R"([{"x": {"a": 1, "\u0061": 2}}])"); }),
            "the member \"a\" stands twice in one object");
  EXPECT_EQ(ErrorOf([] { ParseJson(R"({"\u001b": 1, "\u001b": 2})"); }),
            "the member \"\\x1b\" stands twice in one object");
}

TEST(ParseJson, TakesOneNameInSeveralObjects) {
  EXPECT_EQ(ParseJson(R"({"a": {"a": 1}, "b": [{"a": 1}, {"a": 2}]})").size(), 2U);
}

TEST(ParseJson, NamesLineAndColumnOfWhatIsNotJson) {
  const std::string error = ErrorOf([] { ParseJson("{\n  \"a\": x\n}"); });
  EXPECT_EQ(error.find("not JSON: "), 0U) << error;
  EXPECT_NE(error.find("line 2, column 8"), std::string::npos) << error;
}

TEST(ParseJson, RefusesWhatIsNoDocumentOfItsOwn) {
  for (const char* const text : {"", " ", "{", "[1,]", "{} {}", "'a'", "{a: 1}", "NaN", "// no", "\"\xff\""}) {
    EXPECT_EQ(ErrorOf([text] { ParseJson(text); }).find("not JSON: "), 0U) << text;
  }
}

TEST(ParseJson, QuotesWhatIsNotJsonForATerminal) {
  const std::string error = ErrorOf([] { ParseJson("[\"a\x7f\xff\"]"); });
  EXPECT_NE(error.find("'\"a\\x7f\\xff'"), std::string::npos) << error;
}

TEST(ParseJson, RefusesANumberBeyondADouble) {
  EXPECT_EQ(ErrorOf([] { ParseJson("1e999"); }).find("not JSON: "), 0U);
}

TEST(ParseJson, SurvivesDeepNesting) {
  const std::string deep(200'000, '[');
  EXPECT_EQ(ErrorOf([&deep] { ParseJson(deep); }).find("not JSON: "), 0U);
  EXPECT_TRUE(ParseJson(deep + std::string(200'000, ']')).is_array());
}

}  // namespace
