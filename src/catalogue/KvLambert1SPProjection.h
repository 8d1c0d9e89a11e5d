#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvLambert1SPProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "LAMBERT_CONIC_1SP_PROJECTION"
};

// Lambert conformal conic with one standard parallel.
class KVCART_API CKvLambert1SPProjection : public CKvParameterSet<CKvLambert1SPProjection, 5>,
                                           public CKvLambert1SPProjectionIDs {
 public:
  CKvLambert1SPProjection() = default;
  CKvLambert1SPProjection(const std::string& name, const std::string& branch,
                          const std::string& ellipsoid, double scale, double originLongitude,
                          double originLatitude, double falseEasting, double falseNorthing,
                          bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetScale() const { return _Get(0); }
  void SetScale(double v) { _Set(0, v); }
  double GetOriginLongitude() const { return _Get(1); }
  void SetOriginLongitude(double v) { _Set(1, v); }
  double GetOriginLatitude() const { return _Get(2); }
  void SetOriginLatitude(double v) { _Set(2, v); }
  double GetFalseEasting() const { return _Get(3); }
  void SetFalseEasting(double v) { _Set(3, v); }
  double GetFalseNorthing() const { return _Get(4); }
  void SetFalseNorthing(double v) { _Set(4, v); }
};
