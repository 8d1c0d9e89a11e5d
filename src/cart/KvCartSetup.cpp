#include "cart/KvCartSetup.h"

CKvCartSetup& CKvCartSetup::Instance() {
  static CKvCartSetup instance;
  return instance;
}

CKvCartSetup::CKvCartSetup() : m_bEllipsoidListModified(false), m_bMapProjectionListModified(false) {}

CKvCartSetup::~CKvCartSetup() = default;
