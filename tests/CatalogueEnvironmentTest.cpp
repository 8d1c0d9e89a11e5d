// Many tests look records up through the library's operations, which mark
// the catalogues modified; clear the marks so that the test process does not
// write custom catalogue files into its working folder when it exits.
#include <gtest/gtest.h>

#include "cart/KvCartSetup.h"

namespace {

class CatalogueEnvironment : public ::testing::Environment {
 public:
  void TearDown() override {
    CKvCartSetup::Instance().m_bEllipsoidListModified = false;
    CKvCartSetup::Instance().m_bMapProjectionListModified = false;
  }
};

const ::testing::Environment* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new CatalogueEnvironment);

}  // namespace
