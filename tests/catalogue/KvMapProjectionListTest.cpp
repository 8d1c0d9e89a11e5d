#include <gtest/gtest.h>

#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"

namespace {

CKvMapProjData* Tm(const char* name, double centre) {
  return new CKvTransverseMercatorProjection(name, "B", "WE", 1, centre, 0, 0, 0);
}

TEST(KvMapProjectionList, FindsTheFirstRecordByShortName) {
  CKvMapProjectionList list;
  CKvMapProjData* first = Tm("Zone A", 1);
  list.AddMapProjection(first);
  list.AddMapProjection(Tm("Zone A", 2));
  list.AddMapProjection(Tm("NON-UTM", 3));
  list.AddMapProjection(nullptr);
  EXPECT_EQ(list.GetMapProjection("Zone A"), first);
  EXPECT_EQ(list.GetMapProjection("zone a"), nullptr);  // case-sensitive
  // A WKT string finds the record named like its system.
  EXPECT_EQ(list.GetMapProjection("PROJCS[\"Zone A\",GEOGCS[\"G\",x,y]]"), first);
  // Both sides of the local name reduce to "Local Coordinates".
  ASSERT_NE(list.GetMapProjection(" NON-UTM "), nullptr);
  EXPECT_EQ(std::distance(list.GetIteratorBegin(), list.GetIteratorEnd()), 3);
}

TEST(KvMapProjectionList, DeletesEveryEntryOfARecordOnce) {
  CKvMapProjectionList list;
  CKvMapProjData* twice = Tm("Twice", 1);
  list.AddMapProjection(twice);
  list.AddMapProjection(Tm("Other", 2));
  list.AddMapProjection(twice);
  list.DeleteMapProjection(twice);  // deleted once: AddressSanitizer would see a second delete
  list.DeleteMapProjection(nullptr);
  ASSERT_EQ(std::distance(list.GetIteratorBegin(), list.GetIteratorEnd()), 1);
  EXPECT_EQ((*list.GetIteratorBegin())->GetName(), "Other");
  EXPECT_EQ(list.GetMapProjection("Twice"), nullptr);
}

}  // namespace
