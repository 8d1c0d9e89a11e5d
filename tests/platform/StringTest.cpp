#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "platform/CommaLocale.h"
#include "platform/String.h"

namespace {
const char* const kNull = nullptr;
}  // namespace

TEST(String, EmptyAndNullInputsAreHarmlessThroughEveryOperation) {
  CString s(kNull);
  int position = 0;
  EXPECT_TRUE(s.Tokenize(",", position).IsEmpty());
  EXPECT_EQ(position, -1);
  EXPECT_EQ(s.GetLength(), 0);
  EXPECT_EQ(s[0], '\0');
  EXPECT_EQ(s.Find("a") + s.Find('a') + s.ReverseFind('a'), -3);
  EXPECT_EQ(s.Find(""), 0);
  EXPECT_TRUE(s.Mid(0).IsEmpty() && s.Mid(0, 5).IsEmpty() && s.Left(3).IsEmpty() && s.Right(3).IsEmpty());
  EXPECT_TRUE(s.MakeLower().Trim().TrimLeft("x").TrimRight().IsEmpty());
  EXPECT_EQ(s.Compare(kNull), 0);
  EXPECT_LT(s.CompareNoCase("a"), 0);

  s = "abc";
  s += kNull;
  EXPECT_STREQ(s.Trim(kNull).GetString(), "abc");
  EXPECT_EQ(s.Find(kNull, 1), 1);
  EXPECT_EQ(s[3] + s[-1], 0);
  position = 1;
  EXPECT_STREQ(s.Tokenize(kNull, position).GetString(), "bc");
  EXPECT_EQ(position, 4);
  const char* noFormat = kNull;  // not a constant, so the format check lets it through
  s.Format(noFormat, 1);
  EXPECT_TRUE(s.IsEmpty());
}

TEST(String, FindHonoursTheStartIncludingAtAndBeyondTheEnd) {
  const CString s("abcabc");  // length 6
  struct Case { const char* text; int start; int expected; } cases[] = {
      {"bc", 1, 1},  {"bc", 2, 4},  {"bc", 5, -1}, {"bc", -7, 1}, {"abcabcx", 0, -1},
      {"", 3, 3},    {"", 6, 6},    {"", 7, -1},   {"c", 6, -1},  {"c", 1 << 30, -1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(s.Find(c.text, c.start), c.expected) << '"' << c.text << "\" from " << c.start;
    if (c.text[0] != '\0' && c.text[1] == '\0') {
      EXPECT_EQ(s.Find(c.text[0], c.start), c.expected) << c.text[0] << " from " << c.start;
    }
  }
  EXPECT_EQ(s.Find('c', 5), 5);
  EXPECT_EQ(s.ReverseFind('a'), 3);
}

TEST(String, SubstringsClampNegativeAndOverlongPositionsAndCounts) {
  const CString s("abcdef");
  struct Case { CString got; const char* expected; } cases[] = {
      {s.Mid(2), "cdef"},   {s.Mid(-3), "abcdef"}, {s.Mid(6), ""},         {s.Mid(99), ""},
      {s.Mid(4, 99), "ef"}, {s.Mid(-2, 2), "ab"},  {s.Mid(2, -1), ""},     {s.Mid(6, 1), ""},
      {s.Left(2), "ab"},    {s.Left(-1), ""},      {s.Left(99), "abcdef"}, {s.Right(2), "ef"},
      {s.Right(-1), ""},    {s.Right(99), "abcdef"},
  };
  for (std::size_t i = 0; i < sizeof cases / sizeof cases[0]; ++i) {
    EXPECT_STREQ(cases[i].got.GetString(), cases[i].expected) << "case " << i;
  }
}

TEST(String, TrimRemovesWhiteSpaceOrTheGivenCharactersFromTheChosenEnds) {
  const std::string padded = " \t\n\r\v\fa b\f\v\r\n\t ";
  EXPECT_STREQ(CString(padded).Trim().GetString(), "a b");
  EXPECT_STREQ(CString(padded).TrimLeft().GetString(), "a b\f\v\r\n\t ");
  EXPECT_STREQ(CString(padded).TrimRight().GetString(), " \t\n\r\v\fa b");
  EXPECT_STREQ(CString("\"[x]\"").Trim("\"[]").GetString(), "x");
  EXPECT_STREQ(CString("--x--").TrimLeft("-").GetString(), "x--");
  EXPECT_STREQ(CString("----").TrimRight("-").GetString(), "");
}

TEST(String, CaseFoldingTouchesAsciiLettersOnly) {
  CString s("AZaz@[`{09 \xC3\x84\xC3\xA4\xFF");  // "Ää" in UTF-8, then 0xFF
  EXPECT_STREQ(s.MakeLower().GetString(), "azaz@[`{09 \xC3\x84\xC3\xA4\xFF");
}

TEST(String, ComparisonsGiveTheSignOfTheFirstDifferingUnsignedByte) {
  struct Case { const char* a; const char* b; int sign; int noCaseSign; } cases[] = {
      {"abc", "abc", 0, 0},     {"abc", "abd", -1, -1},   {"abd", "abc", 1, 1},
      {"ab", "abc", -1, -1},    {"abc", "ab", 1, 1},      {"WGS 84", "wgs 84", -1, 0},
      {"a", "\x80", -1, -1},    {"\xFF", "\x7F", 1, 1},   // above 127 sorts after ASCII
      {"\xC3\x84", "\xC3\xA4", -1, -1},                   // non-ASCII is not folded
      {"_", "A", 1, -1},                                  // folding is to lower case
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CString(c.a).Compare(c.b), c.sign) << c.a << " vs " << c.b;
    EXPECT_EQ(CString(c.a).CompareNoCase(c.b), c.noCaseSign) << c.a << " vs " << c.b;
  }
}

TEST(String, TokenizeSkipsConsecutiveDelimitersAndSignalsTheEnd) {
  const CString s(",,a,,bc;,d");  // length 10
  struct Step { const char* token; int position; } steps[] = {
      {"a", 4}, {"bc", 8}, {"d", 11}, {"", -1}, {"", -1},  // the end repeats, never restarts
  };
  int position = 0;
  for (const Step& step : steps) {
    EXPECT_STREQ(s.Tokenize(",;", position).GetString(), step.token);
    EXPECT_EQ(position, step.position) << "after \"" << step.token << '"';
  }
  for (int start : {-5, 10, 11, 1 << 30}) {
    position = start;
    EXPECT_TRUE(s.Tokenize(",", position).IsEmpty()) << start;
    EXPECT_EQ(position, -1) << start;
  }
  position = 1;
  EXPECT_TRUE(CString(";,,;").Tokenize(",;", position).IsEmpty());
  EXPECT_EQ(position, -1);
}

TEST(String, TokenizeWalksWktTextWithChangingDelimiters) {
  const CString wkt("SPHEROID[\"WGS 84\",6378137,298.257223563]]");
  struct Step { const char* delimiters; const char* token; int position; } steps[] = {
      {"[]\"", "SPHEROID", 9}, {"[]\"", "WGS 84", 17}, {",", "6378137", 26},
      {",]", "298.257223563", 40}, {",]", "", -1},
  };
  int position = 0;
  for (const Step& step : steps) {
    EXPECT_STREQ(wkt.Tokenize(step.delimiters, position).GetString(), step.token);
    EXPECT_EQ(position, step.position) << "after \"" << step.token << '"';
  }
  position = 0;
  EXPECT_STREQ(wkt.Tokenize("", position).GetString(), wkt.GetString());
  EXPECT_EQ(position, wkt.GetLength() + 1);
}

TEST(String, AppendingAndFormattingFromItselfIsSafe) {
  CString s("ab");
  s += s;
  s += s.GetString();
  s += 'c';
  EXPECT_STREQ(s.GetString(), "ababababc");
  s.Format("[%s|%s]", s.GetString(), s.Mid(7).GetString());
  EXPECT_STREQ(s.GetString(), "[ababababc|bc]");
}

TEST(String, FormatWritesOutputOfAnyLength) {
  const std::string filler(5000, 'x');
  CString s;
  s.Format("%s|%d|%s", filler.c_str(), -42, filler.c_str());
  ASSERT_EQ(s.GetLength(), 10005);
  EXPECT_EQ(s.Find("|-42|"), 5000);
  EXPECT_EQ(s.Right(3).Compare("xxx"), 0);
}

TEST(String, FormatUsesAPointDecimalSeparatorWhateverTheProcessLocale) {
  CString s;
  s.Format("%.16g %.16g", 0.1, 6378137.5);
  EXPECT_STREQ(s.GetString(), "0.1 6378137.5");

  CommaLocale comma;
  if (!comma.Active()) GTEST_SKIP() << "no locale with a comma decimal point could be installed";
  s.Format("%.16g %.16g", 0.1, 6378137.5);
  EXPECT_STREQ(s.GetString(), "0.1 6378137.5");
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.1f", 0.5);  // the process locale itself is untouched
  EXPECT_STREQ(buffer, "0,5");
}
