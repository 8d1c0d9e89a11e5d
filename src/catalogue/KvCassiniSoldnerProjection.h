#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvCassiniSoldnerProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "CASSINI_SOLDNER_PROJECTION"
};

// Cassini-Soldner.
class KVCART_API CKvCassiniSoldnerProjection
    : public CKvParameterSet<CKvCassiniSoldnerProjection, 4>,
      public CKvCassiniSoldnerProjectionIDs {
 public:
  CKvCassiniSoldnerProjection() = default;
  CKvCassiniSoldnerProjection(const std::string& name, const std::string& branch,
                              const std::string& ellipsoid, double centralMeridian,
                              double originLatitude, double falseEasting, double falseNorthing,
                              bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetCentralMeridian() const { return _Get(0); }
  void SetCentralMeridian(double v) { _Set(0, v); }
  double GetOriginLatitude() const { return _Get(1); }
  void SetOriginLatitude(double v) { _Set(1, v); }
  double GetFalseEasting() const { return _Get(2); }
  void SetFalseEasting(double v) { _Set(2, v); }
  double GetFalseNorthing() const { return _Get(3); }
  void SetFalseNorthing(double v) { _Set(3, v); }
};
