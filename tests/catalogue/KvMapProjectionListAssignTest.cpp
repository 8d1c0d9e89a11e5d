#include <gtest/gtest.h>

#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

// A listed record overwritten by assignment carries the new name: the
// catalogue finds it under that name and no longer under the old one, and
// the map projection object of the new name gets its engine.
TEST(KvMapProjectionList, FindsARecordAssignedInPlaceUnderItsNewName) {
  kvtest::EnsureCatalogue();
  CKvMapProjectionList& catalogue = CKvCartSetup::Instance().m_MapProjectionList;
  auto* listed = new CKvLambert1SPProjection("KvAssign old name", "D", "WE", 1.0, -77, 18, 250000,
                                             150000, true, true);
  kvtest::ScopedRecord record(listed);
  ASSERT_EQ(catalogue.GetMapProjection("KvAssign old name"), listed);

  *listed = CKvLambert1SPProjection("KvAssign new name", "D", "WE", 1.0, 10, 50, 0, 0, true, true);
  EXPECT_EQ(catalogue.GetMapProjection("KvAssign new name"), listed);
  EXPECT_EQ(catalogue.GetMapProjection("KvAssign old name"), nullptr);
  CKvMapProjection object("KvAssign new name");
  ASSERT_NE(object.GetProjection(), nullptr);
  double lon = 0, lat = 0;
  object.GetOrigin(&lon, &lat);
  EXPECT_NEAR(lon, 10, 1e-12);
  EXPECT_EQ(CKvMapProjection("KvAssign old name").GetProjection(), nullptr);

  // Assigning the same name again changes nothing; a copy of a listed
  // record is in no list, and renaming it leaves the catalogue alone.
  *listed = CKvLambert1SPProjection(*listed);
  EXPECT_EQ(catalogue.GetMapProjection("KvAssign new name"), listed);
  CKvLambert1SPProjection copy(*listed);
  copy.SetName("KvAssign copy");
  EXPECT_EQ(catalogue.GetMapProjection("KvAssign copy"), nullptr);
  EXPECT_EQ(catalogue.GetMapProjection("KvAssign new name"), listed);
}

// Assignment in place keeps the record's place in the list, so among records
// of one name the earlier one still wins.
TEST(KvMapProjectionList, AssignedRecordKeepsItsPlaceInTheList) {
  CKvMapProjectionList list;
  auto* first = new CKvTransverseMercatorProjection("First", "B", "WE", 1, 0, 0, 0, 0, true, true);
  auto* second = new CKvTransverseMercatorProjection("Second", "B", "WE", 1, 3, 0, 0, 0, true, true);
  list.AddMapProjection(first);
  list.AddMapProjection(second);
  *first = CKvTransverseMercatorProjection("Second", "B", "WE", 1, 6, 0, 0, 0, true, true);
  EXPECT_EQ(list.GetMapProjection("Second"), first);
  EXPECT_EQ(list.GetMapProjection("First"), nullptr);
  *first = CKvTransverseMercatorProjection("Third", "B", "WE", 1, 6, 0, 0, 0, true, true);
  EXPECT_EQ(list.GetMapProjection("Second"), second);
  EXPECT_EQ(list.GetMapProjection("Third"), first);
}

}  // namespace
