#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvNewZealandMapGridProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "NEW_ZEALAND_MAP_GRID_PROJECTION"
};

// New Zealand map grid.
class KVCART_API CKvNewZealandMapGridProjection
    : public CKvParameterSet<CKvNewZealandMapGridProjection, 4>,
      public CKvNewZealandMapGridProjectionIDs {
 public:
  CKvNewZealandMapGridProjection() = default;
  CKvNewZealandMapGridProjection(const std::string& name, const std::string& branch,
                                 const std::string& ellipsoid, double originLongitude,
                                 double originLatitude, double falseEasting, double falseNorthing,
                                 bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetOriginLongitude() const { return _Get(0); }
  void SetOriginLongitude(double v) { _Set(0, v); }
  double GetOriginLatitude() const { return _Get(1); }
  void SetOriginLatitude(double v) { _Set(1, v); }
  double GetFalseEasting() const { return _Get(2); }
  void SetFalseEasting(double v) { _Set(2, v); }
  double GetFalseNorthing() const { return _Get(3); }
  void SetFalseNorthing(double v) { _Set(3, v); }
};
