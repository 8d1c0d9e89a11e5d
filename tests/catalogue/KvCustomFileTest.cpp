// Saving the user's custom files: only this process's own additions, edits
// and deletions reach the file, applied to what is on disk at the time;
// what the user wrote is never lost, and a file that did not change is not
// touched.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "catalogue/KvCustomFile.h"
#include "catalogue/KvEllipsoidList.h"
#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

const char kNoSystemFolder[] = "/nonexistent-kvcart-system-folder/";

// A user record written by hand, with a comment and free spacing: how it
// reads matters, not how it looks.
std::string Hand(const std::string& name, const std::string& scale, const std::string& comment = "") {
  return "   [UTM_PROJECTION]  // " + comment + "\n" +
         "      Projection_Name = '" + name + "'\n" +
         "      Branch_Name='Mine'\n      Ellipsoid = 'WE'\n" +
         "      Scale = " + scale + "\n      Centre = 9\n      Feast = 500000\n" +
         "   EndSect\n";
}

std::string File(const std::string& records) {
  return "// my grids\n[MAP_PROJECTION_DEFINITION]\n" + records + "EndSect  // the end\n";
}

// How the library writes a record.
std::string Written(CKvMapProjData* record) {
  return CKvCustomFile("MAP_PROJECTION_DEFINITION").Format([record](void* f) { record->WriteToHandle(f); });
}

CKvMapProjData* NewRecord(const std::string& name, double scale) {
  double values[] = {scale, 9, 0, 500000, 0};
  return CKvMapProjData::CreateProjection(CKvMapProjData::eTransverseMercator, name, "Mine", "WE", values);
}

// A process's catalogue: the built-in records and the user's file.
struct Catalogue {
  explicit Catalogue(const std::string& folder) : path(folder + "custom_projection.tsf") {
    list.InitMapProjections(kNoSystemFolder, folder);
  }
  CKvMapProjData* Find(const std::string& name) { return list.GetMapProjection(name); }
  int Save() { return list.SaveCustomMapProjections(path, report); }
  CKvMapProjectionList list;
  std::string path;
  std::string report;
};

ino_t Inode(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 ? st.st_ino : 0;
}

std::vector<std::string> Names(const std::string& dir) {
  std::vector<std::string> names;
  for (auto& e : std::filesystem::directory_iterator(dir)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

TEST(KvCustomFile, AProcessThatChangedNothingLeavesTheFileAlone) {
  const std::string dir = TempFolder();
  // Healthy, damaged (its last EndSect lost) and holding a record that
  // cannot be read: none of them is touched by a process that only reads.
  for (const std::string& text : {File(Hand("A", "0.9996") + Hand("B", "1")),
                                  File(Hand("A", "0.9996")).substr(0, File(Hand("A", "0.9996")).size() - 20),
                                  File(Hand("A", "0.9996") + Hand("X", "abc"))}) {
    WriteFile(dir + "custom_projection.tsf", text);
    const ino_t before = Inode(dir + "custom_projection.tsf");
    Catalogue process(dir);
    ASSERT_NE(process.Find("A"), nullptr);
    EXPECT_EQ(process.Save(), TSF_OK);
    EXPECT_EQ(process.report, "");
    EXPECT_EQ(ReadFile(dir + "custom_projection.tsf"), text);
    EXPECT_EQ(Inode(dir + "custom_projection.tsf"), before);
  }
  EXPECT_EQ(Names(dir), std::vector<std::string>{"custom_projection.tsf"});
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, AppliesOwnChangesToWhatIsOnDiskNow) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_projection.tsf";
  WriteFile(path, File(Hand("A", "0.9996", "first") + Hand("B", "1") + Hand("C", "1")));
  Catalogue process(dir);
  ASSERT_TRUE(process.Find("A") && process.Find("B") && process.Find("C"));

  // Meanwhile another process edits B, removes C and adds D.
  WriteFile(path, File(Hand("A", "0.9996", "first") + Hand("B", "0.5", "theirs") + Hand("D", "1", "theirs")));

  // This one edits A, deletes B and C and adds E.
  double scale[] = {0.9999, 9, 0, 500000, 0};
  process.Find("A")->SetParameters(scale);
  process.list.DeleteMapProjection(process.Find("B"));
  process.list.DeleteMapProjection(process.Find("C"));
  CKvMapProjData* e = NewRecord("E", 1);
  process.list.AddMapProjection(e);
  ASSERT_EQ(process.Save(), TSF_OK) << process.report;

  // A as edited here; B as the other process left it (its edit is not undone
  // by a deletion of what this one read); C stays deleted; D stays; E is
  // added.  Comments around untouched records stay.
  EXPECT_EQ(ReadFile(path), File(Written(process.Find("A")) + Hand("B", "0.5", "theirs") + Hand("D", "1", "theirs") +
                                 Written(e)));
  EXPECT_EQ(Names(dir), (std::vector<std::string>{".tsf.lock", "custom_projection.tsf"}));

  // Saving again changes nothing: the file is not even rewritten.
  const ino_t inode = Inode(path);
  EXPECT_EQ(process.Save(), TSF_OK);
  EXPECT_EQ(Inode(path), inode);
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, AnEditBringsBackARecordRemovedMeanwhileAndAnAdditionIsNotDoubled) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_projection.tsf";
  WriteFile(path, File(Hand("A", "1")));
  Catalogue process(dir);
  CKvMapProjData* same = NewRecord("Same", 1);
  process.list.AddMapProjection(same);
  double scale[] = {0.5, 9, 0, 500000, 0};
  process.Find("A")->SetParameters(scale);
  // Another process removed A and added a record exactly like this one's.
  WriteFile(path, File(Written(same)));
  ASSERT_EQ(process.Save(), TSF_OK) << process.report;
  EXPECT_EQ(ReadFile(path), File(Written(same) + Written(process.Find("A"))));
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, ADamagedFileIsCopiedAsideAndItsReadableRecordsKept) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_projection.tsf";
  // The third record is cut off in the middle.
  const std::string full = File(Hand("A", "1") + Hand("B", "1") + Hand("C", "1"));
  const std::string damaged = full.substr(0, full.find("'C'"));
  WriteFile(path, damaged);
  Catalogue process(dir);
  EXPECT_TRUE(process.Find("A") && process.Find("B"));
  EXPECT_EQ(process.Find("C"), nullptr);
  const CKvCustomFile& noted = process.list.GetCustomFile();
  EXPECT_EQ(noted.GetDamage(), path + ":20: section 'UTM_PROJECTION' opened on line 19 is not closed by EndSect");

  CKvMapProjData* e = NewRecord("E", 1);
  process.list.AddMapProjection(e);
  ASSERT_EQ(process.Save(), TSF_OK) << process.report;
  const std::vector<std::string> names = Names(dir);
  ASSERT_EQ(names.size(), 3u);
  const std::string aside = dir + names[2];
  EXPECT_EQ(aside.rfind(path + ".damaged-", 0), 0u) << aside;
  EXPECT_EQ(ReadFile(aside), damaged);  // byte for byte
  EXPECT_EQ(process.report, path + ":20: section 'UTM_PROJECTION' opened on line 19 is not closed by EndSect; "
                                   "the damaged file is kept as " + aside + " and " + path +
                                   " now holds its 2 readable records and this process's changes");
  // The readable records as they read (their values as the user wrote
  // them), then the addition.
  auto readable = [](const std::string& name) {
    return "   [UTM_PROJECTION]\n      Projection_Name = '" + name +
           "'\n      Branch_Name = 'Mine'\n      Ellipsoid = 'WE'\n      Scale = 1\n      Centre = 9\n"
           "      Feast = 500000\n   EndSect  // UTM_PROJECTION\n";
  };
  EXPECT_EQ(ReadFile(path), "[MAP_PROJECTION_DEFINITION]\n" + readable("A") + readable("B") + Written(e) +
                                "EndSect  // MAP_PROJECTION_DEFINITION\n");
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, ARecordThatDoesNotReadIsRefusedAndKeptAsWritten) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_projection.tsf";
  WriteFile(path, File(Hand("A", "1") + Hand("X", "abc", "typed by hand")));
  Catalogue process(dir);
  EXPECT_EQ(process.Find("X"), nullptr);  // not read as scale 0
  EXPECT_EQ(process.list.GetCustomFile().GetDamage(),
            path + ":15: 'Scale' is 'abc', not a finite number; the record 'X' is left out");
  CKvMapProjData* e = NewRecord("E", 1);
  process.list.AddMapProjection(e);
  ASSERT_EQ(process.Save(), TSF_OK) << process.report;
  EXPECT_EQ(ReadFile(path), File(Hand("A", "1") + Hand("X", "abc", "typed by hand") + Written(e)));
  EXPECT_EQ(process.report, "");

  // The same for every kind of value that is no number.
  for (const char* bad : {"", "'0.9996'", "nan", "inf", "0.9, 1", "1e999"}) {
    SCOPED_TRACE(bad);
    WriteFile(path, File(Hand("Y", bad)));
    Catalogue reader(dir);
    EXPECT_EQ(reader.Find("Y") != nullptr, std::string(bad) == "0.9, 1");  // extra values are ignored
  }
  // The registry's details too: a TOWGS84 of two values is no shift.
  std::string shifted = Hand("Z", "1");
  shifted.insert(shifted.rfind("   EndSect"), "      TOWGS84 = 1, 2\n");
  WriteFile(path, File(shifted));
  Catalogue reader(dir);
  EXPECT_EQ(reader.Find("Z"), nullptr);
  EXPECT_EQ(reader.list.GetCustomFile().GetDamage(),
            path + ":3: its EPSG code, linear unit or TOWGS84 does not read (a positive whole code, a positive "
                   "factor, 3 or 7 numbers); the record 'Z' is left out");
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, KeepsLineEndsOtherTargetsAndAFileWithoutTheTarget) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_projection.tsf";
  auto crlf = [](std::string text) {
    std::string out;
    for (char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
  };
  WriteFile(path, crlf("[NOTES]\n   Who = 'me'\nEndSect\n" + File(Hand("A", "1"))));
  {
    Catalogue process(dir);
    CKvMapProjData* e = NewRecord("E", 1);
    process.list.AddMapProjection(e);
    ASSERT_EQ(process.Save(), TSF_OK) << process.report;
    EXPECT_EQ(ReadFile(path), crlf("[NOTES]\n   Who = 'me'\nEndSect\n" + File(Hand("A", "1") + Written(e))));
  }
  // A file with no catalogue target yet gets one after what it holds.
  WriteFile(path, "[NOTES]\nEndSect");
  Catalogue process(dir);
  CKvMapProjData* e = NewRecord("E", 1);
  process.list.AddMapProjection(e);
  ASSERT_EQ(process.Save(), TSF_OK) << process.report;
  EXPECT_EQ(ReadFile(path), "[NOTES]\nEndSect\n\n[MAP_PROJECTION_DEFINITION]\n" + Written(e) +
                                "EndSect  // MAP_PROJECTION_DEFINITION\n");
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, WritesThroughASymbolicLinkAndCreatesAMissingUserFolder) {
  const std::string dir = TempFolder();
  std::filesystem::create_directory(dir + "shared");
  WriteFile(dir + "shared/grids.tsf", File(Hand("A", "1")));
  std::filesystem::create_directory(dir + "user");
  std::filesystem::create_symlink("../shared/grids.tsf", dir + "user/custom_projection.tsf");
  {
    Catalogue process(dir + "user/");
    CKvMapProjData* e = NewRecord("E", 1);
    process.list.AddMapProjection(e);
    ASSERT_EQ(process.Save(), TSF_OK) << process.report;
    EXPECT_TRUE(std::filesystem::is_symlink(dir + "user/custom_projection.tsf"));
    EXPECT_EQ(ReadFile(dir + "shared/grids.tsf"), File(Hand("A", "1") + Written(e)));
  }
  // A user folder that does not exist yet is made (one level) for the first
  // record a user adds; a deeper missing path is reported.
  Catalogue fresh(dir + "new/");
  fresh.list.AddMapProjection(NewRecord("E", 1));
  ASSERT_EQ(fresh.Save(), TSF_OK) << fresh.report;
  EXPECT_TRUE(std::filesystem::exists(dir + "new/custom_projection.tsf"));
  Catalogue deep(dir + "no/such/");
  deep.list.AddMapProjection(NewRecord("E", 1));
  EXPECT_EQ(deep.Save(), TSF_ERR_WRITE);
  EXPECT_EQ(deep.report, dir + "no/such/custom_projection.tsf: cannot lock its folder: No such file or directory; "
                               "this process's changes to " + dir + "no/such/custom_projection.tsf are not saved");
  EXPECT_FALSE(std::filesystem::exists(dir + "no"));
  std::filesystem::remove_all(dir);
}

TEST(KvCustomFile, EllipsoidsMergeTheSameWay) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_ellipsoid.tsf";
  auto ellipsoid = [](const std::string& code) {
    return "   [REF_ELLIPSOID]\n      Ellipsoid_Name = 'E " + code + "'\n      ID_Code = '" + code +
           "'\n      Semi_Major_Axis = 6378000\n      Inverse_Flatness = 300\n   EndSect\n";
  };
  WriteFile(path, "[ELLIPSOID_DEFINITION]\n" + ellipsoid("Z1") + ellipsoid("Z2") + "EndSect\n");
  CKvEllipsoidList list;
  ASSERT_EQ(list.ReadCustomEllipsoids(path), TSF_OK);
  list.GenerateCompleteList();
  // Another process adds Z3; this one deletes Z1 and adds Z4.
  WriteFile(path, "[ELLIPSOID_DEFINITION]\n" + ellipsoid("Z1") + ellipsoid("Z2") + ellipsoid("Z3") + "EndSect\n");
  list.DeleteEllipsoid(list.GetEllipsoid("Z1"));
  list.AddEllipsoid(new CKvEllipsoid("E Z4", "Z4", 6378000, 300));
  std::string report;
  ASSERT_EQ(list.SaveCustomEllipsoids(path, report), TSF_OK) << report;
  EXPECT_EQ(ReadFile(path), "[ELLIPSOID_DEFINITION]\n" + ellipsoid("Z2") + ellipsoid("Z3") +
                                "   [REF_ELLIPSOID]\n      Ellipsoid_Name = 'E Z4'\n      ID_Code = 'Z4'\n"
                                "      Semi_Major_Axis = 6378000.0\n      Inverse_Flatness = 300.0\n"
                                "   EndSect  // REF_ELLIPSOID\nEndSect\n");
  std::filesystem::remove_all(dir);
}
