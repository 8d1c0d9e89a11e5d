#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "platform/TsfTestUtil.h"
#include "platform/tsf.h"

namespace {

typedef CKvMapProjData D;

// Loads `sectionText` as the only section of a file and reads it into `set`.
void ReadInto(CKvMapProjData& set, const std::string& sectionText, bool userDefined = true) {
  const std::string text =
      "[MAP_PROJECTION_DEFINITION]\n" + sectionText + "EndSect  // MAP_PROJECTION_DEFINITION\n";
  void* file = tsfLoadBuffer(text.data(), text.size(), "sets.tsf", 1);
  ASSERT_NE(file, nullptr) << tsfGetErrorMessageGlb();
  void* section = tsfSectionByNum(tsfTargetByNum(file, 1), 1);
  ASSERT_TRUE(set.IsSectionID(tsfGetName(section)));
  set.ReadFromHandle(section, userDefined);
  tsfClose(&file);
}

std::string Section(const char* name, const std::string& body) {
  return std::string("[") + name + "]\nProjection_Name = 'P'\nBranch_Name = 'B'\n"
         "Ellipsoid = 'WE'\n" + body + "EndSect  // " + name + "\n";
}

TEST(KvParameterSet, PrefersTheAlternativeKeys) {
  CKvTransverseMercatorProjection tm;
  ReadInto(tm, Section("UTM_PROJECTION",
                       "Scale_Reduction = 2500\nScale = 0.5\nCentre = 1\nCentre_dms = 9, 30\n"
                       "Feast_ft_us = 1000000\nFeast = 5\nFnorth = 7\n"));
  EXPECT_EQ(tm.GetScale(), 0.9996);
  EXPECT_EQ(tm.GetCentre(), 9.5);
  EXPECT_EQ(tm.GetFalseEasting(), 304800.60960121924);  // 1e6 x 1200/3937
  EXPECT_EQ(tm.GetFalseNorthing(), 7.0);
  EXPECT_EQ(tm.GetOriginLatitude(), 0.0);  // neither key present
  EXPECT_EQ(tm.GetName(), "P");
  EXPECT_EQ(tm.GetBranchName(), "B");
  EXPECT_EQ(tm.GetEllipsoidID(), "WE");
}

TEST(KvParameterSet, TakesTheSignOfDmsFromTheDegreesAlone) {
  const struct {
    const char* dms;
    double degrees;
  } cases[] = {{"-3, 30, 0", -3.5}, {"-3, -30", -2.5}, {"0, -30", -0.5}, {"12, 15, 36", 12.26}};
  for (const auto& c : cases) {
    CKvLambert1SPProjection set;
    ReadInto(set, Section("LAMBERT_CONIC_1SP_PROJECTION",
                          std::string("Origin_Longitude_dms = ") + c.dms + "\n"));
    EXPECT_NEAR(set.GetOriginLongitude(), c.degrees, 1e-14) << c.dms;
  }
}

TEST(KvParameterSet, ReadOnlySetsIgnoreEditsButNotBranchOrParameters) {
  CKvLambert1SPProjection set("N", "B", "WE", 0.9, 1, 2, 3, 4);
  EXPECT_FALSE(set.CanEdit());
  set.SetName("X");
  set.SetEllipsoidID("AA");
  set.SetScale(0.5);
  EXPECT_EQ(set.GetName(), "N");
  EXPECT_EQ(set.GetEllipsoidID(), "WE");
  EXPECT_EQ(set.GetScale(), 0.9);
  set.SetBranchName("Other");
  EXPECT_EQ(set.GetBranchName(), "Other");
  const double values[] = {1, 10, 20, 30, 40};
  set.SetParameters(values);
  EXPECT_EQ(set.GetScale(), 1.0);
  EXPECT_EQ(set.GetFalseNorthing(), 40.0);

  void* file = tsfCreate("/tmp/unused.tsf");
  tsfAddTarget(file, "MAP_PROJECTION_DEFINITION");
  set.WriteToHandle(file);
  EXPECT_EQ(tsfGetNoSections(tsfTargetByNum(file, 1)), 0);
  tsfClose(&file);

  std::string label;
  double value = -1;
  D::EParamType kind = D::eParamAngle;
  EXPECT_FALSE(set.GetParameter(5, label, value, kind));
  EXPECT_FALSE(set.GetParameter(-1, label, value, kind));
  EXPECT_EQ(value, -1);
  EXPECT_EQ(set.GetProjectionTypeTitle(), "Lambert conformal conic with 1 standard parallel");
}

TEST(KvParameterSet, ReadsTheOldMercatorSectionAndWritesTheNewOne) {
  CKvMercator2SPProjection set;
  ReadInto(set, Section("MERCATOR_PROJECTION", "Parallel_1 = 42\nCentre = 51\n"));
  EXPECT_EQ(set.GetParallel1(), 42.0);
  void* file = tsfCreate("/tmp/unused.tsf");
  tsfAddTarget(file, "MAP_PROJECTION_DEFINITION");
  set.WriteToHandle(file);
  EXPECT_STREQ(tsfGetName(tsfSectionByNum(tsfTargetByNum(file, 1), 1)), "MERCATOR_2SP_PROJECTION");
  tsfClose(&file);
}

TEST(KvParameterSet, RotatedGridListsItsFieldsBackwards) {
  CKvRotatedLongitudeLatitudeProjection set;
  const double values[] = {10, -30, 5};  // longitude, latitude of south pole, angle
  set.SetParameters(values);
  EXPECT_EQ(set.GetLongitudeOfSouthPole(), 10.0);
  std::string label;
  double value;
  D::EParamType kind;
  ASSERT_TRUE(set.GetParameter(0, label, value, kind));
  EXPECT_EQ(label, "Angle of rotation:");
  EXPECT_EQ(value, 5.0);
  ASSERT_TRUE(set.GetParameter(2, label, value, kind));
  EXPECT_EQ(label, "Longitude of south pole:");
  EXPECT_EQ(value, 10.0);
}

// Every set written to a file and read back gives the same record, under
// the section name the set owns.
TEST(KvParameterSet, EverySetRoundTripsThroughAFileSection) {
  const std::string path = tsftest::TempFolder() + "sets.tsf";
  std::vector<std::unique_ptr<D>> written;
  void* file = tsfCreate(path.c_str());
  tsfAddTarget(file, "MAP_PROJECTION_DEFINITION");
  for (int i = 0; i < D::GetNoOfProjections(); ++i) {
    double values[10];
    for (int k = 0; k < 10; ++k) values[k] = 1000.0 * (i + 1) + k + 0.123456789012345;
    const std::string name = "Set " + std::to_string(i + 1);
    written.emplace_back(D::CreateProjection(D::Enum2ProjectionType(i), name, "Branch " + name,
                                             "E" + std::to_string(i), values));
    written.back()->WriteToHandle(file);
  }
  ASSERT_EQ(tsfWrite(file, path.c_str()), TSF_OK);
  tsfClose(&file);

  file = tsfLoadFile(path.c_str(), 1);
  ASSERT_NE(file, nullptr);
  void* target = tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1);
  ASSERT_EQ(tsfGetNoSections(target), D::GetNoOfProjections());
  for (int i = 0; i < D::GetNoOfProjections(); ++i) {
    void* section = tsfSectionByNum(target, i + 1);
    const D& original = *written[i];
    std::unique_ptr<D> read(D::CreateDefaultParameterProjection(original.GetProjectionType()));
    ASSERT_TRUE(read->IsSectionID(tsfGetName(section))) << tsfGetName(section);
    read->ReadFromHandle(section, true);
    EXPECT_TRUE(read->CanEdit());
    EXPECT_EQ(read->GetName(), original.GetName());
    EXPECT_EQ(read->GetBranchName(), original.GetBranchName());
    EXPECT_EQ(read->GetEllipsoidID(), original.GetEllipsoidID());
    ASSERT_EQ(read->GetNoOfParameters(), original.GetNoOfParameters());
    for (int k = 0; k < original.GetNoOfParameters(); ++k) {
      std::string l1, l2;
      double v1 = 0, v2 = 1;
      D::EParamType t1, t2;
      ASSERT_TRUE(original.GetParameter(k, l1, v1, t1));
      ASSERT_TRUE(read->GetParameter(k, l2, v2, t2));
      EXPECT_EQ(l1, l2);
      EXPECT_EQ(v1, v2) << original.GetName() << " " << l1;
    }
  }
  tsfClose(&file);
}

}  // namespace
