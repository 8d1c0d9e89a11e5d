#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvMercator1SPProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "MERCATOR_1SP_PROJECTION"
};

// Mercator with a scale on the equator.
class KVCART_API CKvMercator1SPProjection : public CKvParameterSet<CKvMercator1SPProjection, 4>,
                                            public CKvMercator1SPProjectionIDs {
 public:
  CKvMercator1SPProjection() = default;
  CKvMercator1SPProjection(const std::string& name, const std::string& branch,
                           const std::string& ellipsoid, double scale, double centre,
                           double falseEasting, double falseNorthing, bool canDelete = false,
                           bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetScale() const { return _Get(0); }
  void SetScale(double v) { _Set(0, v); }
  double GetCentre() const { return _Get(1); }
  void SetCentre(double v) { _Set(1, v); }
  double GetFalseEasting() const { return _Get(2); }
  void SetFalseEasting(double v) { _Set(2, v); }
  double GetFalseNorthing() const { return _Get(3); }
  void SetFalseNorthing(double v) { _Set(3, v); }
};
