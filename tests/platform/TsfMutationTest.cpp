// Bounded randomized mutation of real parameter files: whatever the bytes,
// the reader either loads a tree that can be walked, written and read back,
// or refuses with a status and a message; it never crashes or hangs.  The
// sanitizers of the test build turn any memory fault into a failure.

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <random>

#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

std::vector<std::string> Seeds() {
  std::vector<std::string> seeds;
  for (auto& entry : std::filesystem::directory_iterator(KVCART_DATA_DIR))
    if (entry.path().extension() == ".tsf") seeds.push_back(ReadFile(entry.path().string()));
  seeds.push_back("[T]\n  [S]\n    K = 'a''b', 1, -2.5e3, word\n  EndSect\nEndSect\n");
  return seeds;
}

// Pieces that steer mutations towards the grammar's corners.
const char* const kTokens[] = {"[", "]", "'", "''", ",", "=", "//", "EndSect", "\n", "\r\n", "\0",
                               "[S]\n", "EndSect\n", "1e309", "-", ".", "\xC3", "\xFF", " ", "\t"};

std::string Mutate(std::string text, std::mt19937& random) {
  const int edits = 1 + static_cast<int>(random() % 8);
  for (int e = 0; e < edits; ++e) {
    const std::size_t at = text.empty() ? 0 : random() % (text.size() + 1);
    switch (random() % 6) {
      case 0:  // flip a byte
        if (!text.empty()) text[at % text.size()] = static_cast<char>(random());
        break;
      case 1: {  // insert a grammar token
        const char* token = kTokens[random() % (sizeof kTokens / sizeof *kTokens)];
        text.insert(at, token, *token ? std::strlen(token) : 1);
        break;
      }
      case 2:  // delete a run
        if (!text.empty()) text.erase(at % text.size(), random() % 64);
        break;
      case 3:  // duplicate a run
        if (!text.empty()) text.insert(at, text.substr(at % text.size(), random() % 256));
        break;
      case 4:  // truncate
        text.resize(at);
        break;
      default:  // random bytes
        for (int i = static_cast<int>(random() % 16); i > 0; --i) text.insert(text.begin() + at, static_cast<char>(random()));
        break;
    }
  }
  return text;
}

}  // namespace

TEST(TsfMutation, MutatedFilesLoadOrFailCleanly) {
  const std::vector<std::string> seeds = Seeds();
  ASSERT_GE(seeds.size(), 2u);
  const std::string dir = TempFolder();
  std::mt19937 random(12345);
  int loaded = 0, refused = 0;
  for (int round = 0; round < 3000; ++round) {
    const std::string text = Mutate(seeds[round % seeds.size()], random);
    void* file = tsfLoadBuffer(text.data(), text.size(), "mutant.tsf", 1);
    if (!file) {
      ++refused;
      ASSERT_NE(tsfPeekErrorGlb(), TSF_OK);
      ASSERT_EQ(std::string(tsfGetErrorMessageGlb()).rfind("mutant.tsf:", 0), 0u) << tsfGetErrorMessageGlb();
      continue;
    }
    ++loaded;
    const std::string tree = Dump(file);
    // Every tenth survivor also goes through the writer and back.
    if (loaded % 10 == 0) {
      const std::string path = dir + "mutant.tsf";
      ASSERT_EQ(tsfWrite(file, path.c_str()), TSF_OK) << tsfGetErrorMessageGlb();
      void* again = tsfLoadFile(path.c_str(), 1);
      ASSERT_NE(again, nullptr) << tsfGetErrorMessageGlb() << "\n" << text;
      ASSERT_EQ(Dump(again), tree) << text;
      tsfClose(&again);
    }
    tsfClose(&file);
  }
  // Both outcomes must have been exercised for the test to mean anything.
  EXPECT_GT(loaded, 100);
  EXPECT_GT(refused, 100);
  std::filesystem::remove_all(dir);
}
