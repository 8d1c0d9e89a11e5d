#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvGeographicalProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "GEOGRAPHICAL_PROJECTION"
};

// Longitude/latitude on an ellipsoid ("LONG/LAT").  It has no parameters;
// its prime meridian (degrees) is set by the program, never read from or
// written to a file.
class KVCART_API CKvGeographicalProjection
    : public CKvParameterSet<CKvGeographicalProjection, 0>,
      public CKvGeographicalProjectionIDs {
 public:
  CKvGeographicalProjection() : m_dPrimeMeridian(0.0) {}
  CKvGeographicalProjection(const std::string& name, const std::string& branch,
                            const std::string& ellipsoid, double primeMeridian,
                            bool canDelete = false, bool canEdit = false);

  static const SKvParameterSetInfo& Info();

  double GetPrimeMeridian() const { return m_dPrimeMeridian; }
  void SetPrimeMeridian(double v) {
    if (m_bCanEdit) m_dPrimeMeridian = v;
  }

 private:
  double m_dPrimeMeridian;
};
