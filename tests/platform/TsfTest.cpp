#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>
#include <thread>

#include "platform/CommaLocale.h"
#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

// Every kind of parameter, odd texts, comments in odd places, CRLF lines,
// repeated keywords and repeated nested sections.
std::string OddFileText() {
  return "\xEF\xBB\xBF// a byte-order mark, then a comment\r\n"
         "[ELLIPSOID_DEFINITION]   // target\r\n"
         "   [REF_ELLIPSOID]\n"
         "      Ellipsoid_Name = 'O''Brien // not a comment, [not] a section'\n"
         "      ID_Code = ''\n"
         "      Unicode = 'Gau\xC3\x9F-Kr\xC3\xBCger \xE2\x80\x94 \xE5\x9C\xB0\xE7\x90\x86'\n"
         "      Spaces = '  padded  ' , 'EndSect', ','\n"
         "      Semi_Major_Axis = 6378137\n"
         "      Inverse_Flatness = 298.257223563\n"
         "      Central_Meridian_dms = -9, 30, 0.5   // trailing comment\n"
         "      Numbers = +7, -0, 1e5, .5, 5., -1.5E-3, 123456789012345678901234567890, inf, -nan\n"
         "      Words = UTM, abc-def, 1.2.3, 0x10, 12abc, http:x\n"
         "      Empty =\n"
         "      Repeated = 1\n"
         "      Repeated = 2\n"
         "   EndSect  // REF_ELLIPSOID\n"
         "   [REF_ELLIPSOID]\n"
         "      [INNER]\n"
         "         Depth = 3\n"
         "      EndSect\n"
         "      Ellipsoid_Name = 'second'\n"
         "   EndSectX = 'a keyword, not EndSect'\n"
         "   EndSect trailing words are a comment\n"
         "EndSect  // ELLIPSOID_DEFINITION\n"
         "\n"
         "[OTHER_TARGET]\n"
         "EndSect\n"
         "[ELLIPSOID_DEFINITION]\n"
         "EndSect";  // no final line end
}

void* LoadText(const std::string& text, const char* name = "mem.tsf") {
  return tsfLoadBuffer(text.data(), text.size(), name, 1);
}

// Runs in a child process: writes more than the file-size limit allows and
// exits 0 when the write reported its failure.
[[noreturn]] void WriteUnderFileSizeLimit(const std::string& path) {
  signal(SIGXFSZ, SIG_IGN);
  struct rlimit limit = {64, 64};
  setrlimit(RLIMIT_FSIZE, &limit);
  void* big = tsfCreate(path.c_str());
  tsfAddTarget(big, "NEW");
  for (int i = 0; i < 100; ++i) tsfPutParam(big, "Padding", "a long text to overflow the limit");
  const int status = tsfWrite(big, nullptr);
  tsfClose(&big);
  _exit(status == TSF_ERR_WRITE ? 0 : 1);
}

struct Closer {
  void* file;
  ~Closer() { tsfClose(&file); }
};

}  // namespace

TEST(Tsf, ReadsEveryParameterKindWithItsLiteralAndValue) {
  void* file = LoadText(OddFileText());
  ASSERT_NE(file, nullptr) << tsfGetErrorMessageGlb();
  Closer closer{file};
  EXPECT_EQ(tsfGetNoTargets(file), 3);
  void* target = tsfTargetByNameNum(file, "ELLIPSOID_DEFINITION", 1);
  EXPECT_EQ(tsfGetNoInstances(target), 2);
  EXPECT_NE(tsfTargetByNameNum(file, "ELLIPSOID_DEFINITION", 2), nullptr);
  EXPECT_EQ(tsfTargetByNameNum(file, "ELLIPSOID_DEFINITION", 3), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_NOT_FOUND);

  void* first = tsfSectionByNameNum(target, "REF_ELLIPSOID", 1);
  void* second = tsfSectionByNameNum(target, "REF_ELLIPSOID", 2);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(tsfGetNoInstances(first), 2);
  EXPECT_EQ(tsfGetLine(first), 3);
  EXPECT_EQ(tsfGetNoKeywords(second), 2);  // Ellipsoid_Name and EndSectX
  EXPECT_EQ(tsfGetNoSections(second), 1);

  std::string text;
  EXPECT_EQ(tsfGetParam(first, "Ellipsoid_Name", text), TSF_OK);
  EXPECT_EQ(text, "O'Brien // not a comment, [not] a section");
  EXPECT_EQ(tsfGetParam(first, "ID_Code", text), TSF_OK);
  EXPECT_EQ(text, "");
  EXPECT_EQ(tsfGetParam(first, "Unicode", text), TSF_OK);
  EXPECT_EQ(text, "Gau\xC3\x9F-Kr\xC3\xBCger \xE2\x80\x94 \xE5\x9C\xB0\xE7\x90\x86");
  EXPECT_EQ(tsfGetParam(first, "Spaces", text, 2), TSF_OK);
  EXPECT_EQ(text, "EndSect");
  EXPECT_EQ(tsfGetParam(second, "EndSectX", text), TSF_OK);
  EXPECT_EQ(text, "a keyword, not EndSect");

  // Types and values of the numbers and words, in order.
  struct Expect { int type; const char* literal; double value; };
  const double inf = std::numeric_limits<double>::infinity();
  const Expect numbers[] = {
      {TSF_PARAM_INT, "+7", 7}, {TSF_PARAM_INT, "-0", 0}, {TSF_PARAM_DOUBLE, "1e5", 1e5},
      {TSF_PARAM_DOUBLE, ".5", 0.5}, {TSF_PARAM_DOUBLE, "5.", 5}, {TSF_PARAM_DOUBLE, "-1.5E-3", -1.5e-3},
      {TSF_PARAM_DOUBLE, "123456789012345678901234567890", 1.2345678901234568e29},
      {TSF_PARAM_DOUBLE, "inf", inf}, {TSF_PARAM_DOUBLE, "-nan", 0}};
  void* keyword = tsfKeywordByNameNum(first, "Numbers", 1);
  ASSERT_EQ(tsfGetNoParams(keyword), 9);
  for (int i = 0; i < 9; ++i) {
    void* p = tsfParamByNum(keyword, i + 1);
    EXPECT_EQ(tsfGetParamType(p), numbers[i].type) << numbers[i].literal;
    EXPECT_STREQ(tsfGetText(p), numbers[i].literal);
    if (i < 8) {
      EXPECT_EQ(tsfGetDouble(p), numbers[i].value) << numbers[i].literal;
    }
  }
  EXPECT_TRUE(std::isnan(tsfGetDouble(tsfParamByNum(keyword, 9))));
  keyword = tsfKeywordByNameNum(first, "Words", 1);
  ASSERT_EQ(tsfGetNoParams(keyword), 6);
  for (int i = 1; i <= 6; ++i) EXPECT_EQ(tsfGetParamType(tsfParamByNum(keyword, i)), TSF_PARAM_WORD) << i;
  EXPECT_STREQ(tsfGetText(tsfParamByNum(keyword, 3)), "1.2.3");
  EXPECT_EQ(tsfGetNoParams(tsfKeywordByNameNum(first, "Empty", 1)), 0);

  // Repeated keywords are separate occurrences.
  EXPECT_EQ(tsfGetInt(tsfParamByNum(tsfKeywordByNameNum(first, "Repeated", 2), 1)), 2);
  EXPECT_EQ(tsfKeywordByNameNum(first, "Repeated", 3), nullptr);

  // Degrees, minutes, seconds as an integer, an integer and a floating number.
  void* dms = tsfKeywordByNameNum(first, "Central_Meridian_dms", 1);
  EXPECT_EQ(tsfGetInt(tsfParamByNum(dms, 1)), -9);
  EXPECT_EQ(tsfGetInt(tsfParamByNum(dms, 2)), 30);
  EXPECT_EQ(tsfGetDouble(tsfParamByNum(dms, 3)), 0.5);
  double a = 0;
  EXPECT_EQ(tsfGetParam(first, "Semi_Major_Axis", a), TSF_OK);  // an integer reads as floating
  EXPECT_EQ(a, 6378137.0);
}

TEST(Tsf, TypeMismatchReturnsZeroAndSetsItsOwnError) {
  void* file = LoadText("[T]\n  [S]\n    Text = 'abc'\n    Real = 2.5\n    Big = 3000000000\n  EndSect\nEndSect\n");
  ASSERT_NE(file, nullptr);
  Closer closer{file};
  void* s = tsfSectionByNameNum(tsfTargetByNameNum(file, "T", 1), "S", 1);
  void* text = tsfParamByNum(tsfKeywordByNameNum(s, "Text", 1), 1);
  void* real = tsfParamByNum(tsfKeywordByNameNum(s, "Real", 1), 1);
  void* big = tsfParamByNum(tsfKeywordByNameNum(s, "Big", 1), 1);

  EXPECT_EQ(tsfGetDouble(text), 0.0);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_TYPE);
  EXPECT_STREQ(tsfGetErrorMessageGlb(), "mem.tsf:3: parameter 'abc' is a text, not a number");
  EXPECT_EQ(tsfGetInt(real), 0);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_TYPE);
  EXPECT_EQ(tsfGetInt(big), 0);  // beyond int
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_TYPE);
  EXPECT_EQ(tsfGetDouble(big), 3e9);
  EXPECT_STREQ(tsfGetText(real), "2.5");
  EXPECT_EQ(tsfGetErrorGlb(), TSF_OK);

  // The one-call forms leave their output alone on failure.
  int i = 42;
  double d = 4.2;
  std::string t = "kept";
  EXPECT_EQ(tsfGetParam(s, "Text", i), TSF_ERR_TYPE);
  EXPECT_EQ(tsfGetParam(s, "Text", d), TSF_ERR_TYPE);
  EXPECT_EQ(tsfGetParam(s, "Missing", t), TSF_ERR_NOT_FOUND);
  EXPECT_EQ(tsfGetParam(s, "Real", t, 2), TSF_ERR_NOT_FOUND);
  EXPECT_EQ(i, 42);
  EXPECT_EQ(d, 4.2);
  EXPECT_EQ(t, "kept");

  // Handles of the wrong kind and null handles are refused, not followed.
  EXPECT_EQ(tsfGetNoParams(s), 0);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_HANDLE);
  EXPECT_EQ(tsfSectionByNum(text, 1), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_HANDLE);
  EXPECT_STREQ(tsfGetText(nullptr), "");
  EXPECT_EQ(tsfGetNoSections(nullptr), 0);
  EXPECT_EQ(tsfClose(nullptr), TSF_ERR_HANDLE);
  void* none = nullptr;
  EXPECT_EQ(tsfClose(&none), TSF_ERR_HANDLE);
  EXPECT_EQ(tsfAddTarget(s, "X"), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_HANDLE);
}

TEST(Tsf, SyntaxErrorsReportStatusAndLine) {
  struct Case { const char* text; int status; const char* message; } cases[] = {
      {"[T]\n  K = 1\n", TSF_ERR_SYNTAX, "bad.tsf:2: section 'T' opened on line 1 is not closed by EndSect"},
      {"[T]\nEndSect\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:3: EndSect without an open section"},
      {"K = 1\n", TSF_ERR_SYNTAX, "bad.tsf:1: keyword 'K' outside any section"},
      {"[T]\n K 1\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: expected '=' after keyword 'K'"},
      {"[T]\n K = 'open\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: text of 'K' not closed by a quote"},
      {"[T]\n K = 1,\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: missing parameter after ',' in 'K'"},
      {"[T]\n K = 1,,2\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: unexpected character ',' in 'K'"},
      {"[T]\n K = 1 2\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: expected ',' between parameters of 'K'"},
      {"[T]\n K = 'a'b\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: expected ',' between parameters of 'K'"},
      {"\n\n[1T]\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:3: expected a section name after '['"},
      {"[T\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:1: expected ']' after section name 'T'"},
      {"[T] x\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:1: unexpected text after section header 'T'"},
      {"[T]\n 9K = 1\nEndSect\n", TSF_ERR_SYNTAX, "bad.tsf:2: unexpected character '9'"},
  };
  for (const Case& c : cases) {
    const std::string text(c.text);
    EXPECT_EQ(tsfLoadBuffer(text.data(), text.size(), "bad.tsf", 1), nullptr) << c.message;
    EXPECT_EQ(tsfPeekErrorGlb(), c.status) << c.message;
    EXPECT_STREQ(tsfGetErrorMessageGlb(), c.message);
  }
  const char withNul[] = "[T]\n K = 'a\0b'\nEndSect\n";
  EXPECT_EQ(tsfLoadBuffer(withNul, sizeof withNul - 1, "bad.tsf", 1), nullptr);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_ERR_SYNTAX);
  EXPECT_STREQ(tsfGetErrorMessageGlb(), "bad.tsf:2: NUL byte in the text");
}

TEST(Tsf, RefusesMissingHugeAndTooDeepFiles) {
  const std::string dir = TempFolder();
  EXPECT_EQ(tsfLoadFile((dir + "missing.tsf").c_str(), 1), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_NO_FILE);
  EXPECT_EQ(tsfLoadFile(dir.c_str(), 1), nullptr);  // a folder
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_NO_FILE);
  EXPECT_EQ(tsfLoadFile(nullptr, 1), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_NO_FILE);

  // A sparse file just over 100 MiB is refused before it is read.
  const std::string huge = dir + "huge.tsf";
  WriteFile(huge, "");
  ASSERT_EQ(truncate(huge.c_str(), static_cast<off_t>(kTsfMaxFileSize) + 1), 0);
  EXPECT_EQ(tsfLoadFile(huge.c_str(), 1), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_TOO_LARGE);

  auto nested = [](int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "[S]\n";
    text += "K = 1\n";
    for (int i = 0; i < depth; ++i) text += "EndSect\n";
    return text;
  };
  void* ok = LoadText(nested(kTsfMaxDepth));
  EXPECT_NE(ok, nullptr);
  tsfClose(&ok);
  EXPECT_EQ(LoadText(nested(kTsfMaxDepth + 1)), nullptr);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_TOO_DEEP);
  EXPECT_STREQ(tsfGetErrorMessageGlb(), "mem.tsf:65: sections nested deeper than 64 levels");
  std::filesystem::remove_all(dir);
}

TEST(Tsf, WriterLayoutIsExact) {
  const std::string dir = TempFolder();
  const std::string path = dir + "out.tsf";
  void* file = tsfCreate(path.c_str());
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(tsfPutParam(file, "Orphan", 1), TSF_ERR_STATE);  // nothing open yet
  ASSERT_NE(tsfAddTarget(file, "ELLIPSOID_DEFINITION"), nullptr);
  ASSERT_NE(tsfAddSection(file, "REF_ELLIPSOID"), nullptr);
  EXPECT_EQ(tsfPutParam(file, "Ellipsoid_Name", "O'Brien"), TSF_OK);
  EXPECT_EQ(tsfPutParam(file, "Semi_Major_Axis", 6378137.0), TSF_OK);
  EXPECT_EQ(tsfPutParam(file, "Inverse_Flatness", 298.257223563), TSF_OK);
  EXPECT_EQ(tsfPutParam(file, "Zone", 32), TSF_OK);
  void* dms = tsfAddKeyword(file, "Central_Meridian_dms");
  EXPECT_EQ(tsfAddParam(dms, 9), TSF_OK);
  EXPECT_EQ(tsfAddParam(dms, 30), TSF_OK);
  EXPECT_EQ(tsfAddParam(dms, 0.5), TSF_OK);
  EXPECT_EQ(tsfAddWord(dms, "N"), TSF_OK);
  ASSERT_NE(tsfAddSection(file, "NESTED"), nullptr);
  EXPECT_EQ(tsfEndSection(file), TSF_OK);
  EXPECT_EQ(tsfEndSection(file), TSF_OK);
  EXPECT_EQ(tsfEndSection(file), TSF_OK);
  EXPECT_EQ(tsfEndSection(file), TSF_ERR_STATE);
  ASSERT_NE(tsfAddTarget(file, "SECOND"), nullptr);
  EXPECT_EQ(tsfPutParam(file, "Bad Name", 1), TSF_ERR_BAD_NAME);
  EXPECT_EQ(tsfPutParam(file, "Text", "two\nlines"), TSF_ERR_BAD_VALUE);
  EXPECT_EQ(tsfAddWord(dms, "not a word"), TSF_ERR_BAD_VALUE);
  EXPECT_EQ(tsfWrite(file, nullptr), TSF_OK);
  EXPECT_EQ(tsfClose(&file), TSF_OK);
  EXPECT_EQ(file, nullptr);

  EXPECT_EQ(ReadFile(path),
            "[ELLIPSOID_DEFINITION]\n"
            "   [REF_ELLIPSOID]\n"
            "      Ellipsoid_Name = 'O''Brien'\n"
            "      Semi_Major_Axis = 6378137.0\n"
            "      Inverse_Flatness = 298.257223563\n"
            "      Zone = 32\n"
            "      Central_Meridian_dms = 9, 30, 0.5, N\n"
            "      [NESTED]\n"
            "      EndSect  // NESTED\n"
            "   EndSect  // REF_ELLIPSOID\n"
            "EndSect  // ELLIPSOID_DEFINITION\n"
            "\n"
            "[SECOND]\n"
            "EndSect  // SECOND\n");
  // No temporary file is left beside it.
  int entries = 0;
  for (auto& e : std::filesystem::directory_iterator(dir)) entries += e.is_regular_file();
  EXPECT_EQ(entries, 1);
  std::filesystem::remove_all(dir);
}

TEST(Tsf, ReadWriteReadKeepsTheTreeAndTheText) {
  const std::string dir = TempFolder();
  void* file = LoadText(OddFileText(), (dir + "odd.tsf").c_str());
  ASSERT_NE(file, nullptr) << tsfGetErrorMessageGlb();
  const std::string before = Dump(file);
  ASSERT_EQ(tsfWrite(file, (dir + "once.tsf").c_str()), TSF_OK);
  tsfClose(&file);

  void* again = tsfLoadFile((dir + "once.tsf").c_str(), 1);
  ASSERT_NE(again, nullptr) << tsfGetErrorMessageGlb();
  EXPECT_EQ(Dump(again), before);
  ASSERT_EQ(tsfWrite(again, (dir + "twice.tsf").c_str()), TSF_OK);
  tsfClose(&again);
  EXPECT_EQ(ReadFile(dir + "twice.tsf"), ReadFile(dir + "once.tsf"));
  std::filesystem::remove_all(dir);
}

TEST(Tsf, DoublesReadBackBitIdentical) {
  const std::string dir = TempFolder();
  const std::string path = dir + "doubles.tsf";
  std::vector<double> values = {0.1, -0.0, 6378137.0, 298.257223563, 1e300, 5e-324,
                                std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                                std::numeric_limits<double>::infinity(), 0.30480060960121924, 1e21, 123456789.0};
  std::mt19937_64 random(20261121);
  for (int i = 0; i < 2000; ++i) {
    std::uint64_t bits = random();
    double d;
    std::memcpy(&d, &bits, sizeof d);
    if (std::isfinite(d)) values.push_back(d);
  }
  void* file = tsfCreate(path.c_str());
  tsfAddTarget(file, "T");
  for (double v : values) tsfPutParam(file, "V", v);
  ASSERT_EQ(tsfWrite(file, nullptr), TSF_OK);
  tsfClose(&file);

  file = tsfLoadFile(path.c_str(), 1);
  ASSERT_NE(file, nullptr);
  void* target = tsfTargetByNum(file, 1);
  ASSERT_EQ(tsfGetNoKeywords(target), static_cast<int>(values.size()));
  for (std::size_t i = 0; i < values.size(); ++i) {
    void* p = tsfParamByNum(tsfKeywordByNameNum(target, "V", static_cast<int>(i + 1)), 1);
    EXPECT_EQ(tsfGetParamType(p), TSF_PARAM_DOUBLE) << tsfGetText(p);
    const double back = tsfGetDouble(p);
    EXPECT_EQ(std::memcmp(&back, &values[i], sizeof back), 0) << tsfGetText(p);
  }
  tsfClose(&file);
  std::filesystem::remove_all(dir);
}

TEST(Tsf, NumbersIgnoreTheProcessLocale) {
  CommaLocale comma;
  if (!comma.Active()) GTEST_SKIP() << "no locale with a comma decimal point could be installed";
  const std::string dir = TempFolder();
  void* file = tsfCreate((dir + "c.tsf").c_str());
  tsfAddTarget(file, "T");
  tsfPutParam(file, "V", 298.257223563);
  ASSERT_EQ(tsfWrite(file, nullptr), TSF_OK);
  tsfClose(&file);
  EXPECT_EQ(ReadFile(dir + "c.tsf"), "[T]\n   V = 298.257223563\nEndSect  // T\n");
  const std::string text = "[T]\n V = 0.5, 1e-3\nEndSect\n";
  file = tsfLoadBuffer(text.data(), text.size(), "c.tsf", 1);
  ASSERT_NE(file, nullptr);
  void* v = tsfKeywordByNum(tsfTargetByNum(file, 1), 1);
  EXPECT_EQ(tsfGetDouble(tsfParamByNum(v, 1)), 0.5);
  EXPECT_EQ(tsfGetDouble(tsfParamByNum(v, 2)), 1e-3);
  tsfClose(&file);
  std::filesystem::remove_all(dir);
}

TEST(Tsf, FailedWriteKeepsThePreviousFile) {
  const std::string dir = TempFolder();
  const std::string path = dir + "keep.tsf";
  WriteFile(path, "[OLD]\nEndSect\n");

  void* file = tsfCreate(path.c_str());
  tsfAddTarget(file, "NEW");
  // A folder where the file should be, and a folder that does not exist.
  EXPECT_EQ(tsfWrite(file, dir.c_str()), TSF_ERR_WRITE);
  EXPECT_EQ(tsfWrite(file, (dir + "no/such/folder/x.tsf").c_str()), TSF_ERR_WRITE);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_ERR_WRITE);
  EXPECT_NE(std::string(tsfGetErrorMessageGlb()).find(dir + "no/such/folder/x.tsf: cannot create"), std::string::npos);
  EXPECT_EQ(tsfClose(&file), TSF_ERR_WRITE);  // close reports the failed write

  // A write that fails half-way (the file-size limit stops it) leaves the
  // old file as it was and no temporary file behind.
  EXPECT_EXIT(WriteUnderFileSizeLimit(path), ::testing::ExitedWithCode(0), "");
  EXPECT_EQ(ReadFile(path), "[OLD]\nEndSect\n");
  int entries = 0;
  for (auto& e : std::filesystem::directory_iterator(dir)) entries += e.is_regular_file();
  EXPECT_EQ(entries, 1);
  std::filesystem::remove_all(dir);
}

TEST(Tsf, GlobalErrorIsPerThread) {
  EXPECT_EQ(tsfLoadBuffer("K = 1", 5, "a.tsf", 1), nullptr);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_ERR_SYNTAX);
  int other = -1;
  std::string otherMessage = "unset";
  std::thread([&] {
    other = tsfPeekErrorGlb();
    otherMessage = tsfGetErrorMessageGlb();
  }).join();
  EXPECT_EQ(other, TSF_OK);
  EXPECT_EQ(otherMessage, "");
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_SYNTAX);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_OK);  // get clears, the message stays for people
  EXPECT_STREQ(tsfGetErrorMessageGlb(), "a.tsf:1: keyword 'K' outside any section");
  void* ok = tsfLoadBuffer("", 0, "empty.tsf", 1);  // an empty file is a file without targets
  ASSERT_NE(ok, nullptr);
  EXPECT_STREQ(tsfGetErrorMessageGlb(), "");
  EXPECT_EQ(tsfGetNoTargets(ok), 0);
  tsfClose(&ok);
}

TEST(Tsf, ThousandsOfSameNamedSectionsAreFoundByOccurrence) {
  std::string text = "[MAP_PROJECTION_DEFINITION]\n";
  for (int i = 1; i <= 3000; ++i)
    text += (i % 3 ? "[A]\n K = " : "[B]\n K = ") + std::to_string(i) + "\nEndSect\n";
  text += "EndSect\n";
  void* file = LoadText(text);
  ASSERT_NE(file, nullptr);
  void* target = tsfTargetByNum(file, 1);
  EXPECT_EQ(tsfGetNoSections(target), 3000);
  void* b = tsfSectionByNameNum(target, "B", 1);
  EXPECT_EQ(tsfGetNoInstances(b), 1000);
  EXPECT_EQ(tsfGetNoInstances(tsfSectionByNameNum(target, "A", 1)), 2000);
  for (int occurrence = 1; occurrence <= 1000; ++occurrence) {
    int k = 0;
    ASSERT_EQ(tsfGetParam(tsfSectionByNameNum(target, "B", occurrence), "K", k), TSF_OK);
    ASSERT_EQ(k, 3 * occurrence);
  }
  EXPECT_EQ(tsfSectionByNameNum(target, "B", 1001), nullptr);
  EXPECT_EQ(tsfSectionByNameNum(target, "B", 0), nullptr);
  EXPECT_STREQ(tsfGetName(tsfSectionByNum(target, 3000)), "B");
  tsfClose(&file);
}
