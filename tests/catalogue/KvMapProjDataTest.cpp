#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "catalogue/KvMapProjData.h"
#include "platform/tsf.h"

namespace {

typedef CKvMapProjData D;

TEST(KvMapProjData, MapsIndicesAndKindsOfTypes) {
  EXPECT_EQ(D::GetNoOfProjections(), 20);
  EXPECT_EQ(D::Enum2ProjectionType(0), 1);
  EXPECT_EQ(D::ProjectionType2Enum(D::Enum2ProjectionType(19)), 19);
  EXPECT_FALSE(D::IsEquivalent(1, D::eGeographical));
  EXPECT_TRUE(D::IsEquivalent(2, D::eGeographical));
  EXPECT_TRUE(D::IsEquivalent(2, D::eRotatedLongitudeLatitude));
  EXPECT_FALSE(D::IsEquivalent(3, D::eUndefined));
  EXPECT_FALSE(D::IsEquivalent(15, D::eNonProjected));
  EXPECT_TRUE(D::IsEquivalent(1, D::ePolarStereographic));
  EXPECT_FALSE(D::IsEquivalent(2, D::eTransverseMercator));
}

TEST(KvMapProjData, ReadsDegreesMinutesSecondsWithMissingPartsZero) {
  const char text[] =
      "[T]\n   [S]\n      Central_Meridian_dms = 9\n      Origin_Latitude_dms = -3, 30, 12.5\n"
      "   EndSect  // S\nEndSect  // T\n";
  void* file = tsfLoadBuffer(text, sizeof text - 1, "dms.tsf", 1);
  ASSERT_NE(file, nullptr);
  void* section = tsfSectionByNum(tsfTargetByNum(file, 1), 1);
  int d = 1, m = 1;
  double s = 1.0;
  EXPECT_TRUE(D::tsfGetParamDMS(section, "Central_Meridian_dms", &d, &m, &s));
  EXPECT_EQ(d, 9);
  EXPECT_EQ(m, 0);
  EXPECT_EQ(s, 0.0);
  EXPECT_TRUE(D::tsfGetParamDMS(section, "Origin_Latitude_dms", &d, &m, &s));
  EXPECT_EQ(d, -3);
  EXPECT_EQ(m, 30);
  EXPECT_EQ(s, 12.5);
  d = m = 7;
  s = 7.0;
  EXPECT_FALSE(D::tsfGetParamDMS(section, "Centre_dms", &d, &m, &s));
  EXPECT_EQ(d, 0);
  EXPECT_EQ(m, 0);
  EXPECT_EQ(s, 0.0);
  tsfClose(&file);
}

TEST(KvMapProjData, CreatesTheDefaultRecordOfEveryMethod) {
  for (int i = 0; i < D::GetNoOfProjections(); ++i) {
    const D::EProjectionType type = D::Enum2ProjectionType(i);
    std::unique_ptr<D> record(D::CreateDefaultParameterProjection(type));
    ASSERT_NE(record, nullptr) << type;
    EXPECT_EQ(record->GetProjectionType(), type);
    EXPECT_EQ(record->GetName().rfind("Default ", 0), 0u) << type;
    EXPECT_FALSE(record->CanEdit());
    EXPECT_FALSE(record->CanDelete());
  }
  std::unique_ptr<D> nzmg(D::CreateDefaultParameterProjection(D::eNewZealandMapGrid));
  EXPECT_EQ(nzmg->GetName(), "Default New Zealang Map Grid");
  EXPECT_EQ(nzmg->GetEllipsoidID(), "IN");
  std::string label;
  double value = 0;
  D::EParamType kind;
  ASSERT_TRUE(nzmg->GetParameter(3, label, value, kind));
  EXPECT_EQ(value, 6023150.0);
  std::unique_ptr<D> krovak(D::CreateDefaultParameterProjection(D::eKrovak));
  ASSERT_TRUE(krovak->GetParameter(0, label, value, kind));
  EXPECT_EQ(label, "Scale at pseudo parallel:");
  EXPECT_EQ(value, 0.9999);
  EXPECT_EQ(D::CreateDefaultParameterProjection(static_cast<D::EProjectionType>(0)), nullptr);
  EXPECT_EQ(D::CreateDefaultParameterProjection(D::eNonProjected), nullptr);
  EXPECT_EQ(D::CreateDefaultParameterProjection(D::eUndefined), nullptr);
}

TEST(KvMapProjData, CreatesEditableRecordsFromAnArray) {
  double values[] = {1, 2, 3, 4, 5, 6};
  std::unique_ptr<D> record(D::CreateProjection(D::eLambert2SP, "L", "B", "WE", values));
  ASSERT_NE(record, nullptr);
  EXPECT_TRUE(record->CanEdit());
  EXPECT_TRUE(record->CanDelete());
  std::string label;
  double value = 0;
  D::EParamType kind;
  ASSERT_TRUE(record->GetParameter(5, label, value, kind));
  EXPECT_EQ(label, "False northing:");
  EXPECT_EQ(value, 6.0);
  EXPECT_EQ(kind, D::eParamLength);
  EXPECT_EQ(D::CreateProjection(D::eUndefined, "L", "B", "WE", values), nullptr);
}

// Expected values: the published series evaluated with exact rationals in
// Python's fractions module for WGS 84 (n = 0.0016792203863837047,
// e^2 = 0.0066943799901413165), rounded to double.
TEST(KvMapProjData, ComputesTheSeriesOfEachFamily) {
  const double n = 0.0016792203863837047, e2 = 0.0066943799901413165;
  struct Case {
    D::EProjectionType type;
    bool forward;
    double x;
    double c[4];
    int count;
  } cases[] = {
      {D::eTransverseMercator, true, n,
       {0.00083773182063035293, 7.6085277142489987e-07, 1.197638001560523e-09,
        2.4433761945220637e-12}, 4},
      {D::eTransverseMercator, false, n,
       {0.00083773216406005742, 5.9058695679339877e-08, 1.6734888803548483e-10,
        2.1677377630220365e-13}, 4},
      {D::eMercator1SP, false, e2,
       {0.0033565514688796618, 6.5718727107952369e-06, 1.7645643387019855e-08,
        5.3284784447520956e-11}, 4},
      {D::eAlbersEqualArea, false, e2,
       {0.0022392088624808462, 2.8830839728914e-06, 5.0331826636904386e-09, 0}, 3},
      {D::eCassiniSoldner, true, e2,
       {0.99832429845279524, 0.0025146070605187049, 2.6390465943376213e-06,
        3.4180460865957878e-09}, 4},
      {D::eEquidistantConic, false, e2,
       {0.0025188265843906752, 3.7009490356204945e-06, 7.4478137675038301e-09,
        1.7035993238595951e-11}, 4},
  };
  for (const Case& k : cases) {
    double c[4] = {-1, -1, -1, -1};
    D::ComputeFourierCoefficients(k.type, k.forward, k.x, c);
    for (int i = 0; i < k.count; ++i) EXPECT_NEAR(c[i], k.c[i], 1e-15 * std::fabs(k.c[i])) << k.type;
    for (int i = k.count; i < 4; ++i) EXPECT_EQ(c[i], -1) << k.type;
  }
  // No series for these: the array stays as it was.
  for (auto [type, forward] : {std::pair{D::ePolarStereographic, false},
                               {D::eAlbersEqualArea, true}, {D::eMercator1SP, true},
                               {D::eLambert2SP, false}, {D::eUndefined, false}}) {
    double c[4] = {-1, -1, -1, -1};
    D::ComputeFourierCoefficients(type, forward, e2, c);
    for (double v : c) EXPECT_EQ(v, -1) << type;
  }
}

}  // namespace
