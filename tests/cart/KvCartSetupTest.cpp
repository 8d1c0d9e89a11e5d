#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"
#include "platform/TsfTestUtil.h"

namespace {

// Runs `body` in a child process that then ends normally, so that the
// library's static destruction runs there; returns the child's exit status.
int InChild(const std::function<int()>& body) {
  const pid_t pid = fork();
  if (pid == 0) {
    // The child starts with the parent's catalogues; only its own edits
    // should count.
    CKvCartSetup::Instance().m_bEllipsoidListModified = false;
    CKvCartSetup::Instance().m_bMapProjectionListModified = false;
    std::exit(body());
  }
  int status = -1;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

TEST(KvCartSetup, WritesTheUsersEditsAtProcessExit) {
  const std::string user = tsftest::TempFolder();
  ASSERT_EQ(InChild([&] {
              CKvCartSetup::Instance().ReadData(KVCART_DATA_DIR, user);
              CKvMapProjection::AddEllipsoid(new CKvEllipsoid("Exit test", "Z9", 6378000, 300));
              double values[] = {0.9999, 12, 0, 100000, 0};
              CKvMapProjection::AddMapProjection(CKvMapProjData::CreateProjection(
                  CKvMapProjData::eTransverseMercator, "Exit test grid", "Exit datum", "Z9",
                  values));
              return 0;
            }),
            0);
  EXPECT_TRUE(Exists(user + "custom_projection.tsf"));
  EXPECT_TRUE(Exists(user + "custom_ellipsoid.tsf"));

  // A second process reads the records back, editable, and changes nothing.
  EXPECT_EQ(InChild([&] {
              CKvCartSetup::Instance().ReadData(KVCART_DATA_DIR, user);
              CKvMapProjData* record =
                  CKvCartSetup::Instance().m_MapProjectionList.GetMapProjection("Exit test grid");
              CKvEllipsoid* ellipsoid = CKvMapProjection::EllipsoidFromID("Z9");
              const bool ok = record && record->CanEdit() && record->GetBranchName() == "Exit datum" &&
                              ellipsoid && ellipsoid->GetMajor() == 6378000;
              return ok ? 0 : 1;
            }),
            0);

  // A process that changes nothing writes nothing.
  const std::string untouched = tsftest::TempFolder();
  EXPECT_EQ(InChild([&] {
              CKvCartSetup::Instance().ReadData(KVCART_DATA_DIR, untouched);
              return 0;
            }),
            0);
  EXPECT_FALSE(Exists(untouched + "custom_projection.tsf"));
  EXPECT_FALSE(Exists(untouched + "custom_ellipsoid.tsf"));
}

// A host that never read the catalogues has no user folder; reading a record
// (which counts as a change) must not drop files into its working folder.
TEST(KvCartSetup, WritesNothingWithoutAUserFolder) {
  const std::string cwd = tsftest::TempFolder();
  ASSERT_EQ(InChild([&] {
              if (chdir(cwd.c_str()) != 0) return 1;
              CKvCartSetup::Instance().m_strUserFolder.clear();
              CKvMapProjection::MapProjection("UTM-32");
              CKvMapProjection::AddEllipsoid(new CKvEllipsoid("No folder", "Z8", 6378000, 300));
              return 0;
            }),
            0);
  EXPECT_FALSE(Exists(cwd + "custom_projection.tsf"));
  EXPECT_FALSE(Exists(cwd + "custom_ellipsoid.tsf"));
}

TEST(KvCartSetup, WritesOnlyAnEmptyTargetWithoutUserRecords) {
  CKvMapProjectionList list;
  const std::string folder = tsftest::TempFolder();
  list.InitMapProjections(KVCART_DATA_DIR, folder);  // no user file: built-in records only
  ASSERT_EQ(list.WriteCustomMapProjections(folder + "out.tsf"), TSF_OK);
  void* file = tsfLoadFile((folder + "out.tsf").c_str(), 1);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(tsfGetNoTargets(file), 1);
  EXPECT_EQ(tsfGetNoSections(tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1)), 0);
  tsfClose(&file);

  // Sections of unknown methods are skipped without an error.
  tsftest::WriteFile(folder + "unknown.tsf",
                     "[MAP_PROJECTION_DEFINITION]\n[NO_SUCH_PROJECTION]\nProjection_Name = 'x'\n"
                     "EndSect\nEndSect\n");
  const long before = std::distance(list.GetIteratorBegin(), list.GetIteratorEnd());
  EXPECT_EQ(list.ReadMapProjections(folder + "unknown.tsf", true), TSF_OK);
  EXPECT_EQ(std::distance(list.GetIteratorBegin(), list.GetIteratorEnd()), before);
  EXPECT_NE(list.ReadMapProjections(folder + "missing.tsf", true), TSF_OK);
}

}  // namespace
