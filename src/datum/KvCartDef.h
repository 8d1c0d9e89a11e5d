#pragma once

#include <cstdint>

#include "platform/KvCartExport.h"

// Enumerations shared by the datum classes.  The datum-shift parameters and
// the datum converter both derive from this class, so it is polymorphic and
// carries nothing but its vtable.
class KVCART_API CKvCartDef {
 public:
  // Kind of shift from a datum to WGS 84.  Stored as a 32-bit value because
  // host programs read it straight out of the objects.
  enum ETypeOfDatumShift : int32_t {
    eNoShift = 0,     // "None"
    e3Parameter = 1,  // "3 parameter": translations only
    e7Parameter = 2,  // "7 parameter": translations, rotations and scale
  };

  CKvCartDef() = default;
  CKvCartDef(const CKvCartDef&) = default;
  CKvCartDef& operator=(const CKvCartDef&) = default;
  virtual ~CKvCartDef();
};
