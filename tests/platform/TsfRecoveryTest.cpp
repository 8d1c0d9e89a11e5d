// The parameter-file library's services for files that must not be lost:
// recovering loads, section texts and lines, writes through links, removal
// of dead writers' temporary files, the folder lock and copies kept aside.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

const char kThreeRecords[] =
    "[CATALOGUE]\n"
    "   [RECORD]\n      Name = 'one'\n   EndSect\n"
    "   [RECORD]\n      Name = 'two'\n   EndSect\n"
    "   [RECORD]\n      Name = 'three'\n   EndSect\n"
    "EndSect\n";

// Which sections of the first target a recovering load marks damaged, as
// "0"/"1" per section.
std::string DamageMap(void* file) {
  std::string map;
  void* target = tsfTargetByNum(file, 1);
  for (int s = 1; s <= tsfGetNoSections(target); ++s) map += tsfIsDamaged(tsfSectionByNum(target, s)) ? '1' : '0';
  return map;
}

std::string Replace(std::string text, const std::string& from, const std::string& to) {
  const std::string::size_type at = text.find(from);
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

std::vector<std::string> Names(const std::string& dir) {
  std::vector<std::string> names;
  for (auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// A process id that no longer runs: a child that has been waited for.
pid_t DeadPid() {
  const pid_t pid = fork();
  if (pid == 0) _exit(0);
  waitpid(pid, nullptr, 0);
  return pid;
}

}  // namespace

TEST(TsfRecovery, KeepsEverySectionTheDamageDidNotReach) {
  const std::string text = kThreeRecords;
  struct Case {
    const char* what;
    std::string text;
    const char* damaged;  // per record of the target
    const char* message;
  } cases[] = {
      {"the target's EndSect missing", text.substr(0, text.size() - 8), "000",
       "mem.tsf:10: section 'CATALOGUE' opened on line 1 is not closed by EndSect"},
      {"a broken line in the second record", Replace(text, "Name = 'two'", "Name = 'two"), "010",
       "mem.tsf:6: text of 'Name' not closed by a quote"},
      {"a NUL byte in the first record", Replace(text, "'one'", std::string("'o\0e'", 5)), "100",
       "mem.tsf:3: NUL byte in the text"},
      {"cut in the third record", text.substr(0, text.find("'three'")), "001",
       "mem.tsf:9: section 'RECORD' opened on line 8 is not closed by EndSect"},
      // The bad header leaves its EndSect to close the target early, so the
      // third record becomes a target of its own.
      {"an unbalanced bracket", Replace(text, "[RECORD]\n      Name = 'two'", "[RECORD\n      Name = 'two'"), "0",
       "mem.tsf:5: expected ']' after section name 'RECORD'"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(tsfLoadBuffer(c.text.data(), c.text.size(), "mem.tsf", 1), nullptr);  // the strict load refuses
    void* file = tsfLoadBufferRecover(c.text.data(), c.text.size(), "mem.tsf", 1);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(tsfPeekErrorGlb(), TSF_ERR_SYNTAX);
    EXPECT_STREQ(tsfGetErrorMessageGlb(), c.message);
    EXPECT_EQ(tsfIsDamaged(file), 1);
    EXPECT_EQ(DamageMap(file), c.damaged);
    tsfClose(&file);
  }
  // An undamaged file loads the same either way, with nothing marked.
  void* file = tsfLoadBufferRecover(text.data(), text.size(), "mem.tsf", 1);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_OK);
  EXPECT_EQ(tsfIsDamaged(file), 0);
  EXPECT_EQ(DamageMap(file), "000");
  tsfClose(&file);
}

TEST(TsfRecovery, SectionTextIgnoresCommentsSpacingAndLineEnds) {
  const std::string plain = kThreeRecords;
  const std::string odd =
      "// the same records, written by hand\r\n"
      "[CATALOGUE]\r\n"
      "[RECORD]  // first\r\n Name='one'\r\nEndSect\r\n"
      "\t[RECORD]\r\n\t\tName   =   'two'   // second\r\n\tEndSect trailing words\r\n"
      "   [RECORD]\n      Name = 'three'\n   EndSect\n"
      "EndSect";
  void* a = tsfLoadBuffer(plain.data(), plain.size(), "a.tsf", 1);
  void* b = tsfLoadBuffer(odd.data(), odd.size(), "b.tsf", 1);
  ASSERT_TRUE(a && b);
  for (int s = 1; s <= 3; ++s) {
    std::string ta, tb;
    ASSERT_EQ(tsfFormatSection(tsfSectionByNum(tsfTargetByNum(a, 1), s), ta), TSF_OK);
    ASSERT_EQ(tsfFormatSection(tsfSectionByNum(tsfTargetByNum(b, 1), s), tb), TSF_OK);
    EXPECT_EQ(ta, tb);
  }
  std::string text;
  tsfFormatSection(tsfSectionByNum(tsfTargetByNum(b, 1), 2), text);
  EXPECT_EQ(text, "   [RECORD]\n      Name = 'two'\n   EndSect  // RECORD\n");
  // A section spans its header line to its EndSect line.
  void* second = tsfSectionByNum(tsfTargetByNum(b, 1), 2);
  EXPECT_EQ(tsfGetLine(second), 6);
  EXPECT_EQ(tsfGetEndLine(second), 8);
  EXPECT_EQ(tsfGetEndLine(tsfTargetByNum(b, 1)), 12);
  EXPECT_EQ(tsfGetFile(second), b);
  EXPECT_EQ(tsfFormatSection(b, text), TSF_ERR_HANDLE);  // a file is no section
  tsfClose(&a);
  tsfClose(&b);
}

TEST(TsfRecovery, WritesThroughSymbolicLinksAndKeepsThem) {
  const std::string dir = TempFolder();
  std::filesystem::create_directory(dir + "real");
  WriteFile(dir + "real/cat.tsf", "[OLD]\nEndSect\n");
  // An absolute link, a relative one to it (a chain), and a dangling one.
  std::filesystem::create_symlink(dir + "real/cat.tsf", dir + "abs.tsf");
  std::filesystem::create_symlink("abs.tsf", dir + "rel.tsf");
  std::filesystem::create_symlink("real/new.tsf", dir + "dangling.tsf");
  const std::string text = "[NEW]\nEndSect\n";
  for (const char* link : {"abs.tsf", "rel.tsf", "dangling.tsf"}) {
    SCOPED_TRACE(link);
    ASSERT_EQ(tsfWriteBuffer((dir + link).c_str(), text.data(), text.size()), TSF_OK) << tsfGetErrorMessageGlb();
    EXPECT_TRUE(std::filesystem::is_symlink(dir + link));
  }
  EXPECT_EQ(ReadFile(dir + "real/cat.tsf"), text);
  EXPECT_EQ(ReadFile(dir + "real/new.tsf"), text);
  EXPECT_EQ(Names(dir + "real"), (std::vector<std::string>{"cat.tsf", "new.tsf"}));
  std::filesystem::remove_all(dir);
}

TEST(TsfRecovery, WriteRemovesOnlyTheTemporariesOfWritersThatDied) {
  const std::string dir = TempFolder();
  const std::string path = dir + "cat.tsf";
  const std::string dead = "cat.tsf.tmp." + std::to_string(DeadPid()) + ".0";
  const std::string alive = "cat.tsf.tmp." + std::to_string(getppid()) + ".3";
  for (const std::string& name : {dead, alive, std::string("cat.tsf.tmp.notapid"), std::string("other.tsf.tmp.1.0")})
    WriteFile(dir + name, "half a file");
  ASSERT_EQ(tsfWriteBuffer(path.c_str(), "[T]\nEndSect\n", 12), TSF_OK);
  EXPECT_EQ(Names(dir), (std::vector<std::string>{"cat.tsf", alive, "cat.tsf.tmp.notapid", "other.tsf.tmp.1.0"}));
  std::filesystem::remove_all(dir);
}

TEST(TsfRecovery, LockKeepsASecondWriterWaitingAndTellsWhy) {
  const std::string dir = TempFolder();
  const std::string path = dir + "cat.tsf";
  int ready[2], done[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(done), 0);
  const pid_t holder = fork();
  if (holder == 0) {
    const int lock = tsfLock(path.c_str(), 0);
    char c = lock >= 0 ? 'y' : 'n';
    (void)!write(ready[1], &c, 1);
    (void)!read(done[0], &c, 1);  // holds the lock until told
    _exit(0);
  }
  char c = 0;
  ASSERT_EQ(read(ready[0], &c, 1), 1);
  ASSERT_EQ(c, 'y');
  EXPECT_EQ(tsfLock(path.c_str(), 50), -1);
  EXPECT_EQ(tsfPeekErrorGlb(), TSF_ERR_WRITE);
  EXPECT_EQ(std::string(tsfGetErrorMessageGlb()), path + ": its folder is locked by another process");
  (void)!write(done[1], &c, 1);
  waitpid(holder, nullptr, 0);
  const int lock = tsfLock(path.c_str(), 50);  // released when its holder ended
  EXPECT_GE(lock, 0);
  EXPECT_EQ(tsfUnlock(lock), TSF_OK);

  EXPECT_EQ(tsfLock((dir + "no/such/folder/cat.tsf").c_str(), 0), -1);
  EXPECT_EQ(std::string(tsfGetErrorMessageGlb()),
            dir + "no/such/folder/cat.tsf: cannot lock its folder: No such file or directory");
  for (int fd : {ready[0], ready[1], done[0], done[1]}) close(fd);
  std::filesystem::remove_all(dir);
}

TEST(TsfRecovery, CopyAsideKeepsTheBytesAndNeverReplacesAnEarlierCopy) {
  const std::string dir = TempFolder();
  std::filesystem::create_directory(dir + "real");
  const std::string bytes("[T]\n  K = 'x\n\0 broken", 22);
  WriteFile(dir + "real/cat.tsf", bytes);
  std::filesystem::create_symlink("real/cat.tsf", dir + "cat.tsf");
  std::string first, second;
  ASSERT_EQ(tsfCopyAside((dir + "cat.tsf").c_str(), "damaged", first), TSF_OK) << tsfGetErrorMessageGlb();
  ASSERT_EQ(tsfCopyAside((dir + "cat.tsf").c_str(), "damaged", second), TSF_OK) << tsfGetErrorMessageGlb();
  EXPECT_NE(first, second);
  // Beside the file the link names: "<file>.damaged-YYYYmmdd-HHMMSS[-n]".
  const std::string prefix = dir + "real/cat.tsf.damaged-";
  EXPECT_EQ(first.rfind(prefix, 0), 0u) << first;
  EXPECT_EQ(first.size(), prefix.size() + 15) << first;
  EXPECT_EQ(second.rfind(prefix, 0), 0u) << second;
  EXPECT_EQ(ReadFile(first), bytes);
  EXPECT_EQ(ReadFile(second), bytes);
  EXPECT_EQ(ReadFile(dir + "real/cat.tsf"), bytes);
  EXPECT_EQ(tsfCopyAside((dir + "missing.tsf").c_str(), "damaged", first), TSF_ERR_NO_FILE);
  EXPECT_EQ(tsfCopyAside((dir + "cat.tsf").c_str(), "not a name", first), TSF_ERR_BAD_NAME);
  std::filesystem::remove_all(dir);
}

// The global error is written while the process exits, after the calling
// thread's thread-local objects are gone (a failed save at exit does this);
// it must still be there to write.
TEST(TsfRecovery, GlobalErrorOutlivesTheThreadsOwnObjects) {
  EXPECT_EXIT(
      {
        struct Late {
          ~Late() {
            tsfSetErrorGlb(TSF_ERR_WRITE, "late: written during static destruction");
            if (std::strcmp(tsfGetErrorMessageGlb(), "late: written during static destruction") != 0) _exit(3);
          }
        };
        static Late late;
        (void)late;
        tsfSetErrorGlb(TSF_ERR_SYNTAX, std::string(300, 'x').c_str());  // beyond any small-string buffer
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  // Messages longer than the buffer are cut, not overrun.
  const std::string huge(10000, 'y');
  tsfSetErrorGlb(TSF_ERR_SYNTAX, huge.c_str());
  EXPECT_EQ(std::strlen(tsfGetErrorMessageGlb()), 4351u);
  EXPECT_EQ(tsfGetErrorGlb(), TSF_ERR_SYNTAX);
}
