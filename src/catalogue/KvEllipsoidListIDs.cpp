#include "catalogue/KvEllipsoidListIDs.h"

const std::string CKvEllipsoidListIDs::ID_TARGET = "ELLIPSOID_DEFINITION";
const std::string CKvEllipsoidListIDs::ID_SECTION = "REF_ELLIPSOID";
const std::string CKvEllipsoidListIDs::ID_NAME = "Ellipsoid_Name";
const std::string CKvEllipsoidListIDs::ID_CODE = "ID_Code";
const std::string CKvEllipsoidListIDs::ID_MAJOR = "Semi_Major_Axis";
const std::string CKvEllipsoidListIDs::ID_INV_FLATNESS = "Inverse_Flatness";
