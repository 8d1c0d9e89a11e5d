#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "catalogue/KvEllipsoidList.h"
#include "platform/TsfTestUtil.h"

using namespace tsftest;

namespace {

const std::string kBundled = std::string(KVCART_DATA_DIR) + "ellipsoid.tsf";

std::vector<std::string> Ids(CKvEllipsoidList& list, CKvEllipsoidList::EEllipsoidTypes type) {
  std::vector<std::string> ids;
  for (auto it = list.GetIteratorBegin(type); it != list.GetIteratorEnd(type); ++it) ids.push_back((*it)->GetID());
  return ids;
}

CKvEllipsoidList::EEllipsoidTypes Type(int value) { return static_cast<CKvEllipsoidList::EEllipsoidTypes>(value); }

}  // namespace

TEST(KvEllipsoidList, ReadsTheBundledCatalogue) {
  CKvEllipsoidList list;
  ASSERT_EQ(list.ReadEllipsoids(kBundled, false), TSF_OK);
  list.GenerateCompleteList();
  // The NGA list in file order, then the registry's ellipsoids that it lacks.
  const std::vector<std::string> predefined = Ids(list, CKvEllipsoidList::ePredefinedEllipsoids);
  ASSERT_GE(predefined.size(), 24u);
  EXPECT_EQ(std::vector<std::string>(predefined.begin(), predefined.begin() + 24),
            (std::vector<std::string>{"AA", "AM", "AN", "BN", "BR", "CC", "CD", "EA", "EB", "EC", "ED", "EE",
                                      "EF", "FA", "HE", "HO", "ID", "IN", "KA", "RF", "SA", "WD", "WE", "XY"}));
  // Values of NIMA TR 8350.2, Appendix A.1.
  struct Case { const char* id; const char* name; double a, invF; } cases[] = {
      {"WE", "WGS 1984", 6378137.0, 298.257223563},   {"RF", "GRS 1980", 6378137.0, 298.257222101},
      {"IN", "International 1924", 6378388.0, 297.0},  {"CC", "Clarke 1866", 6378206.4, 294.9786982},
      {"BR", "Bessel 1841", 6377397.155, 299.1528128}, {"EF", "Everest (Pakistan)", 6377309.613, 300.8017},
      {"KA", "Krassovsky 1940", 6378245.0, 298.3},     {"XY", "Sphere 6371229", 6371229.0, 0.0},
  };
  for (const Case& c : cases) {
    const CKvEllipsoid* e = list.GetEllipsoid(c.id);
    ASSERT_NE(e, nullptr) << c.id;
    EXPECT_EQ(e->GetName(), c.name);
    EXPECT_EQ(e->GetMajor(), c.a) << c.id;
    EXPECT_EQ(e->GetInvFlatness(), c.invF) << c.id;
    EXPECT_EQ(list.GetEllipsoidFromName(c.name), e);
  }
  EXPECT_EQ(list.GetEllipsoid("we"), nullptr);  // identifiers are case-sensitive
  EXPECT_EQ(list.GetEllipsoid(""), nullptr);
  EXPECT_EQ(list.GetEllipsoidFromName("WGS 84"), nullptr);
}

TEST(KvEllipsoidList, FileProblemsReturnTheLibraryStatusAndKeepWhatWasRead) {
  const std::string dir = TempFolder();
  CKvEllipsoidList list;
  EXPECT_EQ(list.ReadEllipsoids(dir + "missing.tsf", false), TSF_ERR_NO_FILE);
  WriteFile(dir + "broken.tsf", "[ELLIPSOID_DEFINITION]\n[REF_ELLIPSOID]\nID_Code = 'ZZ\nEndSect\nEndSect\n");
  EXPECT_EQ(list.ReadEllipsoids(dir + "broken.tsf", false), TSF_ERR_SYNTAX);
  WriteFile(dir + "other.tsf", "[SOMETHING_ELSE]\nEndSect\n");
  EXPECT_EQ(list.ReadEllipsoids(dir + "other.tsf", false), TSF_OK);
  list.GenerateCompleteList();
  EXPECT_TRUE(Ids(list, CKvEllipsoidList::eAllEllipsoids).empty());

  // Missing keywords leave empty text and 0; other sections in the target are
  // not ellipsoids.  A number that does not read as one is no 0: the
  // ellipsoid is left out with the reason, and the rest is still read.
  WriteFile(dir + "partial.tsf",
            "[ELLIPSOID_DEFINITION]\n"
            "  [REF_ELLIPSOID]\n    ID_Code = 'P1'\n  EndSect\n"
            "  [REF_ELLIPSOID]\n    ID_Code = 'P2'\n    Semi_Major_Axis = 'big'\n  EndSect\n"
            "  [NOT_AN_ELLIPSOID]\n    ID_Code = 'NO'\n  EndSect\n"
            "  [REF_ELLIPSOID]\n    Ellipsoid_Name = 'Second'\n    Inverse_Flatness = 300\n  EndSect\n"
            "EndSect\n");
  EXPECT_EQ(list.ReadEllipsoids(dir + "partial.tsf", true), TSF_ERR_TYPE);
  EXPECT_EQ(std::string(tsfGetErrorMessageGlb()),
            dir + "partial.tsf:7: 'Semi_Major_Axis' is 'big', not a finite number; the ellipsoid 'P2' is left out");
  list.GenerateCompleteList();
  ASSERT_EQ(Ids(list, CKvEllipsoidList::eCustomEllipsoids), (std::vector<std::string>{"P1", ""}));
  EXPECT_EQ(list.GetEllipsoid("P1")->GetMajor(), 0.0);
  EXPECT_EQ(list.GetEllipsoid("P1")->GetName(), "");
  EXPECT_EQ(list.GetEllipsoidFromName("Second")->GetInvFlatness(), 300.0);
  std::filesystem::remove_all(dir);
}

TEST(KvEllipsoidList, PredefinedShadowsCustomAndOnlyCustomCanChange) {
  CKvEllipsoidList list;
  ASSERT_EQ(list.ReadEllipsoids(kBundled, false), TSF_OK);
  list.GenerateCompleteList();
  CKvEllipsoid* wgs = list.GetEllipsoid("WE");
  auto* impostor = new CKvEllipsoid("My WGS", "WE", 1.0, 2.0);
  auto* mine = new CKvEllipsoid("Mine", "M1", 6378000.0, 300.0);
  list.AddEllipsoid(impostor);
  list.AddEllipsoid(mine);
  list.AddEllipsoid(mine);     // already held: ignored, so never deleted twice
  list.AddEllipsoid(wgs);      // a predefined one: ignored
  list.AddEllipsoid(nullptr);  // ignored
  EXPECT_EQ(list.GetEllipsoid("WE"), wgs);  // the first match, in the predefined part
  EXPECT_EQ(list.GetEllipsoidFromName("My WGS"), impostor);
  EXPECT_EQ(list.GetEllipsoid("M1"), mine);

  // The complete list is the predefined list followed by the custom list;
  // any type but 1 and 2 selects it.
  const size_t n = Ids(list, CKvEllipsoidList::ePredefinedEllipsoids).size();
  std::vector<std::string> all = Ids(list, Type(0));
  ASSERT_EQ(all.size(), n + 2);
  EXPECT_EQ(all.front(), "AA");
  EXPECT_EQ(all[23], "XY");
  EXPECT_EQ(all[n], "WE");
  EXPECT_EQ(all[n + 1], "M1");
  EXPECT_EQ(Ids(list, Type(7)), all);
  EXPECT_EQ(Ids(list, CKvEllipsoidList::eCustomEllipsoids), (std::vector<std::string>{"WE", "M1"}));

  // Editing a custom ellipsoid renames it in the complete list; a predefined
  // one is not the list's to edit and deleting it changes nothing.
  *mine = CKvEllipsoid("Mine, renamed", "M2", 6378000.0, 300.0);
  list.EditEllipsoid(mine);
  EXPECT_EQ(list.GetEllipsoid("M2"), mine);
  list.DeleteEllipsoid(wgs);
  list.DeleteEllipsoid(nullptr);
  EXPECT_EQ(list.GetEllipsoid("WE"), wgs);
  EXPECT_EQ(Ids(list, Type(0)).size(), n + 2);

  list.DeleteEllipsoid(impostor);
  EXPECT_EQ(list.GetEllipsoidFromName("My WGS"), nullptr);
  EXPECT_EQ(Ids(list, CKvEllipsoidList::eCustomEllipsoids), (std::vector<std::string>{"M2"}));
  EXPECT_EQ(Ids(list, Type(0)).size(), n + 1);
}

TEST(KvEllipsoidList, CustomEllipsoidsWriteAndReadBack) {
  const std::string dir = TempFolder();
  const std::string path = dir + "custom_ellipsoid.tsf";
  CKvEllipsoidList list;
  ASSERT_EQ(list.ReadEllipsoids(kBundled, false), TSF_OK);
  list.AddEllipsoid(new CKvEllipsoid("O'Brien's \xC3\xA9llipsoid // odd", "OB", 6378137.123456789, 298.1));
  list.AddEllipsoid(new CKvEllipsoid("Sphere", "S1", 6370997.0, 0.0));
  list.AddEllipsoid(new CKvEllipsoid("Tiny", "T1", 0.1 + 0.2, 1.0 / 3.0));
  ASSERT_EQ(list.WriteCustomEllipsoids(path), TSF_OK);

  CKvEllipsoidList back;
  ASSERT_EQ(back.ReadEllipsoids(path, true), TSF_OK);
  back.GenerateCompleteList();
  EXPECT_TRUE(Ids(back, CKvEllipsoidList::ePredefinedEllipsoids).empty());
  ASSERT_EQ(Ids(back, CKvEllipsoidList::eCustomEllipsoids), (std::vector<std::string>{"OB", "S1", "T1"}));
  for (const char* id : {"OB", "S1", "T1"}) {
    const CKvEllipsoid* original = list.GetEllipsoid(id);
    const CKvEllipsoid* read = back.GetEllipsoid(id);
    ASSERT_TRUE(original && read) << id;
    EXPECT_TRUE(*original == *read) << id;
    EXPECT_EQ(original->GetMajor(), read->GetMajor()) << id;  // bit for bit
    EXPECT_EQ(original->GetInvFlatness(), read->GetInvFlatness()) << id;
  }
  // An unwritable place reports the write failure and leaves the old file.
  const std::string before = ReadFile(path);
  EXPECT_EQ(list.WriteCustomEllipsoids(dir), TSF_ERR_WRITE);
  EXPECT_EQ(ReadFile(path), before);
  std::filesystem::remove_all(dir);
}

TEST(KvEllipsoidList, CopiesAreDeep) {
  CKvEllipsoidList list;
  list.AddEllipsoid(new CKvEllipsoid("A", "A1", 1.0, 2.0));
  CKvEllipsoidList copy(list);
  copy.DeleteEllipsoid(copy.GetEllipsoid("A1"));
  ASSERT_NE(list.GetEllipsoid("A1"), nullptr);
  copy = list;
  EXPECT_NE(copy.GetEllipsoid("A1"), list.GetEllipsoid("A1"));
  EXPECT_TRUE(*copy.GetEllipsoid("A1") == *list.GetEllipsoid("A1"));
}
