#pragma once

#include <string>

#include "platform/KvCartExport.h"

// The keywords of an ellipsoid catalogue file.
class KVCART_API CKvEllipsoidListIDs {
 public:
  static const std::string ID_TARGET;        // "ELLIPSOID_DEFINITION"
  static const std::string ID_SECTION;       // "REF_ELLIPSOID", one per ellipsoid
  static const std::string ID_NAME;          // "Ellipsoid_Name" (text)
  static const std::string ID_CODE;          // "ID_Code" (text)
  static const std::string ID_MAJOR;         // "Semi_Major_Axis" (floating)
  static const std::string ID_INV_FLATNESS;  // "Inverse_Flatness" (floating)
};
