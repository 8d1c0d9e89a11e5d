// Writes the seed corpora of the fuzz targets, each input within its
// target's length limit:
//
//   kvcart_fuzz_seeds DATA_FOLDER TEST_SEED_FOLDER OUT_FOLDER MAX_TSF MAX_TEXT
//
//   OUT/wkt    the WKT texts of the tests (TEST_SEED_FOLDER) and the WKT the
//              library writes for every bundled catalogue record;
//   OUT/tsf    the bundled catalogue files, the large ones cut into whole
//              files of at most MAX_TSF bytes at record boundaries;
//   OUT/cface  inputs of the flat-interface target: two strings (names and
//              WKT texts), the family byte 0 and a few numbers.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "cart/KvCartSetup.h"
#include "wkt/KvPRJParser.h"

namespace fs = std::filesystem;

namespace {

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void Write(const fs::path& path, const std::string& data) { std::ofstream(path, std::ios::binary) << data; }

// A catalogue file as whole files of at most `limit` bytes: the lines up to
// the first record, records as they come, and the closing line.
void CutCatalogue(const std::string& text, std::size_t limit, const fs::path& folder, const std::string& stem) {
  if (text.size() <= limit) {
    Write(folder / (stem + ".tsf"), text);
    return;
  }
  // Records start with a line "   [" (indented section) and the file ends
  // with the target's EndSect line.
  const std::string::size_type first = text.find("\n   [");
  const std::string::size_type close = text.rfind("\nEndSect");
  if (first == std::string::npos || close == std::string::npos || close < first) return;
  const std::string head = text.substr(0, first + 1), tail = text.substr(close + 1);
  std::string piece = head;
  int n = 0;
  std::string::size_type at = first + 1;
  while (at < close + 1) {
    std::string::size_type next = text.find("\n   [", at);
    if (next == std::string::npos || next > close) next = close;
    const std::string record = text.substr(at, next + 1 - at);
    if (piece.size() + record.size() + tail.size() > limit && piece.size() > head.size()) {
      Write(folder / (stem + "-" + std::to_string(++n) + ".tsf"), piece + tail);
      piece = head;
    }
    if (head.size() + record.size() + tail.size() <= limit) piece += record;
    at = next + 1;
  }
  if (piece.size() > head.size()) Write(folder / (stem + "-" + std::to_string(++n) + ".tsf"), piece + tail);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::cerr << "usage: kvcart_fuzz_seeds DATA_FOLDER TEST_SEED_FOLDER OUT_FOLDER MAX_TSF MAX_TEXT\n";
    return 2;
  }
  const std::string data = argv[1];
  const fs::path tests = argv[2], out = argv[3];
  const std::size_t maxTsf = std::stoul(argv[4]), maxText = std::stoul(argv[5]);
  for (const char* kind : {"wkt", "tsf", "cface"}) fs::create_directories(out / kind);

  std::vector<std::string> wkt;
  for (const auto& entry : fs::directory_iterator(tests)) wkt.push_back(Read(entry.path()));
  CKvCartSetup& setup = CKvCartSetup::Instance();
  setup.ReadData(data, "/nonexistent-kvcart-fuzz-user/");
  std::vector<std::string> names;
  for (auto it = setup.m_MapProjectionList.GetIteratorBegin(); it != setup.m_MapProjectionList.GetIteratorEnd(); ++it) {
    CString text;
    CKvPRJParser(**it).Format(text);
    wkt.push_back(text.GetString());
    names.push_back((*it)->GetName());
  }
  int n = 0;
  for (const std::string& text : wkt)
    if (text.size() <= maxText) Write(out / "wkt" / (std::to_string(++n) + ".prj"), text);

  for (const auto& entry : fs::directory_iterator(data))
    if (entry.path().extension() == ".tsf")
      CutCatalogue(Read(entry.path()), maxTsf, out / "tsf", entry.path().stem().string());

  // Names and texts in pairs, every 40th of each so the corpus stays small;
  // numbers: a point in degrees, one in metres, a height, an angle.
  const double numbers[8] = {9.5, 56.1, 512345.6, 6212345.7, 120.0, 30.0, 1.0, 2.0};
  const std::string tail = std::string(1, '\0') + std::string(reinterpret_cast<const char*>(numbers), sizeof numbers);
  std::vector<std::string> strings = {"UTM-32", "LONG/LAT", "NON-UTM", "", "UTM", " UTM-33 "};
  for (std::size_t i = 0; i < names.size(); i += 40) strings.push_back(names[i]);
  for (std::size_t i = 0; i < wkt.size(); i += 40) strings.push_back(wkt[i]);
  n = 0;
  for (std::size_t i = 0; i < strings.size(); ++i) {
    const std::string input = strings[i] + '\0' + strings[(i * 7 + 1) % strings.size()] + '\0' + tail;
    if (input.size() <= maxText) Write(out / "cface" / (std::to_string(++n) + ".bin"), input);
  }
  setup.m_bMapProjectionListModified = false;
  setup.m_bEllipsoidListModified = false;
  return 0;
}
