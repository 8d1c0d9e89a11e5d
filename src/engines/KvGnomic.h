#pragma once

#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"

// The gnomonic projection is not implemented: constructing one or converting
// with one prints "Gnomic projection not implemented yet" and stops the
// process.  The class stays abstract (no Clone, no TransferParameters), so
// nothing in the library can create it by accident.
class KVCART_API CKvGnomic : public CKvProjection {
 public:
  CKvGnomic();
  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
};
