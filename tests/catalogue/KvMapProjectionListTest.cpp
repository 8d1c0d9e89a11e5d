#include <gtest/gtest.h>

#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"

namespace {

CKvMapProjData* Tm(const char* name, double centre, bool editable = false) {
  return new CKvTransverseMercatorProjection(name, "B", "WE", 1, centre, 0, 0, 0, editable,
                                             editable);
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

// The index must follow every change at once and keep list order: a record
// renamed to a name held by a later record wins over it, one renamed to a
// name held by an earlier record does not.
TEST(KvMapProjectionList, FindsAddedDeletedAndRenamedRecordsAtOnce) {
  CKvMapProjectionList list;
  CKvMapProjData* a = Tm("A", 1, true);
  CKvMapProjData* b = Tm("B", 2, true);
  CKvMapProjData* c = Tm("C", 3, true);
  for (CKvMapProjData* r : {a, b, c}) list.AddMapProjection(r);

  b->SetName("C");  // b precedes c
  EXPECT_EQ(list.GetMapProjection("C"), b);
  EXPECT_EQ(list.GetMapProjection("B"), nullptr);
  b->SetName("A");  // a precedes b
  EXPECT_EQ(list.GetMapProjection("A"), a);
  EXPECT_EQ(list.GetMapProjection("C"), c);
  list.DeleteMapProjection(a);
  EXPECT_EQ(list.GetMapProjection("A"), b);

  // A record renamed while outside the list is filed under its new name.
  CKvMapProjData* d = Tm("D", 4, true);
  d->SetName("E");
  list.AddMapProjection(d);
  EXPECT_EQ(list.GetMapProjection("E"), d);
  EXPECT_EQ(list.GetMapProjection("D"), nullptr);

  // A read-only record keeps its name, and its place in the index.
  CKvMapProjData* fixed = new CKvTransverseMercatorProjection("F", "B", "WE", 1, 0, 0, 0, 0,
                                                              /*canDelete=*/false,
                                                              /*canEdit=*/false);
  list.AddMapProjection(fixed);
  fixed->SetName("G");
  EXPECT_EQ(list.GetMapProjection("F"), fixed);
  EXPECT_EQ(list.GetMapProjection("G"), nullptr);

  // Two lists holding records of the same name do not see each other's.
  CKvMapProjectionList other;
  CKvMapProjData* twin = Tm("C", 5, true);
  other.AddMapProjection(twin);
  c->SetName("H");
  EXPECT_EQ(other.GetMapProjection("C"), twin);
  EXPECT_EQ(list.GetMapProjection("C"), nullptr);
  EXPECT_EQ(list.GetMapProjection("H"), c);
}
