// The user's files as a user's machine sees them: real host processes
// (kvcart_test_host) that end normally, are killed, run side by side, or
// exit with a user folder that is missing, read-only, not theirs or full.
// Nothing the user wrote may be lost and no host may crash.

#include <gtest/gtest.h>
#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

const std::string kHost = KVCART_TEST_HOST;
const std::string kNoSystem = "/nonexistent-kvcart-system-folder/";

struct Outcome {
  int status;  // the exit status, or 128 + the signal
  std::string out, err;
};

// Starts the host with `args` after SYSTEM_FOLDER USER_FOLDER; its output
// goes to files beside `outBase`.  `inChild` runs in the child before exec.
pid_t Start(const std::string& user, const std::vector<std::string>& args, const std::string& outBase,
            const std::function<void()>& inChild = {}) {
  const pid_t pid = fork();
  if (pid != 0) return pid;
  const int out = open((outBase + ".out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const int err = open((outBase + ".err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (out < 0 || err < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0) _exit(126);
  if (inChild) inChild();
  std::vector<std::string> all = {kHost, kNoSystem, user};
  all.insert(all.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (std::string& a : all) argv.push_back(&a[0]);
  argv.push_back(nullptr);
  execv(kHost.c_str(), argv.data());
  _exit(127);
}

int Wait(pid_t pid) {
  int status = 0;
  if (waitpid(pid, &status, 0) != pid) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

Outcome Finish(pid_t pid, const std::string& outBase) {
  Outcome o{Wait(pid), ReadFile(outBase + ".out"), ReadFile(outBase + ".err")};
  std::filesystem::remove(outBase + ".out");
  std::filesystem::remove(outBase + ".err");
  return o;
}

Outcome Host(const std::string& user, const std::vector<std::string>& args,
             const std::function<void()>& inChild = {}) {
  static int serial = 0;
  const std::string base = "/tmp/kvcart-host-" + std::to_string(getpid()) + "-" + std::to_string(++serial);
  return Finish(Start(user, args, base, inChild), base);
}

// No sanitizer report, no crash.
void ExpectClean(const Outcome& o) {
  EXPECT_EQ(o.status, 0) << o.err;
  EXPECT_EQ(o.err.find("Sanitizer"), std::string::npos) << o.err;
  EXPECT_EQ(o.err.find("runtime error"), std::string::npos) << o.err;
}

std::vector<std::string> Names(const std::string& dir) {
  std::vector<std::string> names;
  for (auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

bool HasTemporary(const std::string& dir) {
  for (const std::string& name : Names(dir))
    if (name.find(".tmp.") != std::string::npos) return true;
  return false;
}

// The names of the records a custom projection file holds, or nothing when
// it does not load whole.
std::multiset<std::string> Records(const std::string& path, bool* whole = nullptr) {
  std::multiset<std::string> names;
  void* file = tsfLoadFile(path.c_str(), 1);
  if (whole) *whole = file != nullptr;
  if (!file) return names;
  void* target = tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1);
  for (int s = 1; target && s <= tsfGetNoSections(target); ++s) {
    std::string name;
    tsfGetParam(tsfSectionByNum(target, s), "Projection_Name", name);
    names.insert(name);
  }
  tsfClose(&file);
  return names;
}

std::string Record(const std::string& name, const std::string& scale) {
  return "   [UTM_PROJECTION]\n      Projection_Name = '" + name +
         "'\n      Branch_Name = 'Sites'\n      Ellipsoid = 'WE'\n      Scale = " + scale +
         "\n      Centre = 9\n      Feast = 500000\n   EndSect  // UTM_PROJECTION\n";
}

const std::string kCustomFile = "// survey sites\n[MAP_PROJECTION_DEFINITION]\n" + Record("Site A", "0.9996") +
                                Record("Site B", "1") + Record("Site C", "0.9999") +
                                "EndSect  // MAP_PROJECTION_DEFINITION\n";

// Runs `body` as nobody when this process is root, since root writes
// through any permission.
std::vector<std::string> AsOthers(std::vector<std::string> args) {
  if (geteuid() == 0) args.insert(args.begin(), "nobody");
  return args;
}

// A folder the unprivileged host can enter.
std::string OpenFolder() {
  const std::string dir = TempFolder();
  chmod(dir.c_str(), 0755);
  return dir;
}

}  // namespace

TEST(FaultSuite, CorruptedFilesAreLeftByteForByteByAHostThatOnlyConverts) {
  const std::string dir = OpenFolder();
  const std::string path = dir + "custom_projection.tsf";
  auto replace = [](std::string text, const std::string& from, const std::string& to) {
    const std::string::size_type at = text.find(from);
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
  };
  struct Case {
    std::string what, text;
    bool damaged;  // the host must say so
  };
  std::vector<Case> cases = {
      {"the last EndSect missing", kCustomFile.substr(0, kCustomFile.rfind("EndSect")), true},
      {"a NUL byte", replace(kCustomFile, "Site B", std::string("Site\0B", 6)), true},
      {"NUL bytes only", std::string(300, '\0'), true},
      {"a bracket missing", replace(kCustomFile, "[UTM_PROJECTION]", "[UTM_PROJECTION"), true},
      {"a bracket too many", replace(kCustomFile, "Feast = 500000", "Feast = [500000"), true},
      {"an EndSect too many", kCustomFile + "EndSect\n", true},
      {"a record's EndSect missing", replace(kCustomFile, "   EndSect  // UTM_PROJECTION\n   [UTM", "   [UTM"), true},
      {"a scale that is no number", replace(kCustomFile, "Scale = 1\n", "Scale = abc\n"), true},
      {"bytes that are no text", replace(kCustomFile, "Sites", "\xFF\xFE\x80"), false},
  };
  for (int k = 1; k <= 10; ++k) cases.push_back({"cut at " + std::to_string(k) + "/11", kCustomFile.substr(0, kCustomFile.size() * k / 11), false});
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteFile(path, c.text);
    const Outcome o = Host(dir, {"convert", "use", "Site A", "use", "Site C", "error"});
    ExpectClean(o);
    EXPECT_EQ(ReadFile(path), c.text);  // byte for byte
    EXPECT_EQ(Names(dir), std::vector<std::string>{"custom_projection.tsf"});
    if (c.damaged) {
      EXPECT_NE(o.out.find(path + ":"), std::string::npos) << o.out;
      EXPECT_NE(o.out.find("the file is left as it is"), std::string::npos) << o.out;
    }
  }
  std::filesystem::remove_all(dir);
}

TEST(FaultSuite, ExitIsSafeWhateverTheUserFolder) {
  const std::string dir = OpenFolder();
  // Missing, with its parent missing too: reported, nothing created.
  {
    const Outcome o = Host(dir + "no/such/", {"add", "New", "3", "ellipsoid", "Z7"});
    ExpectClean(o);
    EXPECT_NE(o.err.find("KvCart: " + dir + "no/such/custom_projection.tsf: cannot lock its folder: "
                         "No such file or directory; this process's changes"), std::string::npos) << o.err;
    EXPECT_FALSE(std::filesystem::exists(dir + "no"));
  }
  // Missing, its parent there: made, and the records saved.
  {
    const Outcome o = Host(dir + "fresh/", {"add", "New", "3"});
    ExpectClean(o);
    EXPECT_EQ(o.err, "");
    EXPECT_EQ(Records(dir + "fresh/custom_projection.tsf").size(), 3u);
  }
  // Never given: nothing lands in the working folder.
  {
    const std::string cwd = OpenFolder();
    const Outcome o = Host("-", {"add", "New", "3", "ellipsoid", "Z7"}, [&] {
      if (chdir(cwd.c_str()) != 0) _exit(125);
    });
    ExpectClean(o);
    EXPECT_EQ(o.err, "");
    EXPECT_TRUE(Names(cwd).empty());
    std::filesystem::remove_all(cwd);
  }
  // Read-only, and another user's: the file stays, the host says why.
  for (const bool readOnly : {true, false}) {
    SCOPED_TRACE(readOnly ? "read-only" : "not ours");
    if (!readOnly && geteuid() != 0) continue;  // only root can hand a folder to another user
    const std::string user = OpenFolder();
    WriteFile(user + "custom_projection.tsf", kCustomFile);
    chmod((user + "custom_projection.tsf").c_str(), 0644);
    chmod(user.c_str(), readOnly ? 0555 : 0755);
    const Outcome o = Host(user, AsOthers({"add", "New", "3", "delete", "Site B"}));
    ExpectClean(o);
    EXPECT_NE(o.err.find("cannot lock its folder: Permission denied"), std::string::npos) << o.err;
    EXPECT_EQ(ReadFile(user + "custom_projection.tsf"), kCustomFile);
    EXPECT_EQ(Names(user), std::vector<std::string>{"custom_projection.tsf"});
    chmod(user.c_str(), 0755);
    std::filesystem::remove_all(user);
  }
  std::filesystem::remove_all(dir);
}

// A full folder: a 64 KiB file system of its own where the machine allows
// mounting one (in a private mount namespace that ends with the test's
// child), otherwise a file-size limit on the host.
TEST(FaultSuite, AFullFolderKeepsTheOldFileAndNoTemporary) {
  const std::string dir = OpenFolder();
  const std::string user = dir + "small/";
  std::filesystem::create_directory(user);
  const pid_t child = fork();
  if (child == 0) {
    std::vector<std::string> args = {"add", "Big", "2000"};
    std::string how = "file-size limit";
    if (unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        mount("kvcart", user.c_str(), "tmpfs", 0, "size=64k") == 0) {
      how = "full file system";
    } else {
      args.insert(args.begin(), {"fsize", "40000"});
    }
    WriteFile(user + "custom_projection.tsf", kCustomFile);
    const Outcome o = Host(user, args);
    // Exit codes tell the parent what went wrong, since this child's
    // mount is gone once it ends.
    if (o.status != 0 || o.err.find("Sanitizer") != std::string::npos) _exit(10);
    if (o.err.find("KvCart: ") == std::string::npos ||
        (o.err.find("No space left on device") == std::string::npos &&
         o.err.find("File too large") == std::string::npos))
      _exit(11);
    if (ReadFile(user + "custom_projection.tsf") != kCustomFile) _exit(12);
    if (HasTemporary(user)) _exit(13);
    std::printf("[          ] full folder by %s\n", how.c_str());
    std::fflush(stdout);
    _exit(0);
  }
  EXPECT_EQ(Wait(child), 0);
  std::filesystem::remove_all(dir);
}

TEST(FaultSuite, KillDuringALargeExitWriteLeavesAWholeFileAndNoTemporary) {
  const std::string dir = OpenFolder();
  const std::string path = dir + "custom_projection.tsf";
  // About 2 MB: its write takes long enough to be hit.
  ExpectClean(Host(dir, {"add", "Large", "8000"}));
  std::multiset<std::string> expected = Records(path);
  ASSERT_EQ(expected.size(), 8000u);
  std::mt19937 random(2024);
  int midWrite = 0;
  for (int round = 0; round < 20; ++round) {
    SCOPED_TRACE(round);
    const std::string base = dir + "round";
    // Each host adds one record, so its exit rewrites the large file; it is
    // killed at a random moment once its temporary file has appeared.
    const pid_t pid = Start(dir, {"add", "Round" + std::to_string(round), "1"}, base);
    const std::string temp = "custom_projection.tsf.tmp." + std::to_string(pid) + ".";
    bool seen = false;
    for (int wait = 0; wait < 60000 && !seen; ++wait) {
      for (const std::string& name : Names(dir)) seen = seen || name.rfind(temp, 0) == 0;
      if (!seen) std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
    kill(pid, SIGKILL);
    const Outcome o = Finish(pid, base);
    if (o.status != 128 + SIGKILL) ExpectClean(o);  // it finished first
    // The file is whole: the old one, or the new one with the record.
    bool whole = false;
    const std::multiset<std::string> now = Records(path, &whole);
    ASSERT_TRUE(whole);
    if (now.size() == expected.size() + 1) expected.insert("Round" + std::to_string(round) + "-1");
    ASSERT_EQ(now, expected);
    for (const std::string& name : Names(dir)) midWrite += name.rfind(temp, 0) == 0;
  }
  // Most kills must have hit the write itself for the test to mean anything.
  EXPECT_GE(midWrite, 10);
  std::printf("[          ] %d of 20 kills hit the write\n", midWrite);
  // The next writer clears what the killed ones left.
  ExpectClean(Host(dir, {"add", "Final", "1"}));
  expected.insert("Final-1");
  EXPECT_EQ(Records(path), expected);
  EXPECT_FALSE(HasTemporary(dir));
  std::filesystem::remove_all(dir);
}

TEST(FaultSuite, FourProcessesAddingToOneFolderLoseNothing) {
  const std::string dir = OpenFolder();
  const std::string path = dir + "custom_projection.tsf";
  WriteFile(path, kCustomFile);
  std::multiset<std::string> expected = Records(path);
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    // A reader that read the file before the writers add to it and ends
    // after them must not undo their additions.
    int gate[2], readerGate[2];
    ASSERT_EQ(pipe(gate), 0);
    ASSERT_EQ(pipe(readerGate), 0);
    const pid_t reader =
        Start(dir, {"convert", "use", "Site A", "wait", std::to_string(readerGate[0])}, dir + "reader");
    std::vector<pid_t> writers;
    for (int w = 0; w < 4; ++w) {
      const std::string prefix = "R" + std::to_string(round) + "W" + std::to_string(w);
      writers.push_back(Start(dir, {"add", prefix, "50", "wait", std::to_string(gate[0])}, dir + prefix));
      for (int n = 1; n <= 50; ++n) expected.insert(prefix + "-" + std::to_string(n));
    }
    // All four end at once.
    ASSERT_EQ(write(gate[1], "wwww", 4), 4);
    for (int w = 0; w < 4; ++w)
      ExpectClean(Finish(writers[w], dir + "R" + std::to_string(round) + "W" + std::to_string(w)));
    ASSERT_EQ(write(readerGate[1], "r", 1), 1);
    ExpectClean(Finish(reader, dir + "reader"));
    for (int fd : {gate[0], gate[1], readerGate[0], readerGate[1]}) close(fd);
    EXPECT_EQ(Records(path), expected);
  }
  // The user's own comment at the top is still there.
  EXPECT_EQ(ReadFile(path).rfind("// survey sites\n", 0), 0u);
  EXPECT_FALSE(HasTemporary(dir));
  std::filesystem::remove_all(dir);
}
