#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvMercator2SPProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;      // "MERCATOR_2SP_PROJECTION"
  static const std::string ID_PROJECTION_SECTION_OLD;  // "MERCATOR_PROJECTION"
};

// Mercator with a standard parallel.  Sections of the old name
// "MERCATOR_PROJECTION" are read too; writing always uses the new name.
class KVCART_API CKvMercator2SPProjection : public CKvParameterSet<CKvMercator2SPProjection, 4>,
                                            public CKvMercator2SPProjectionIDs {
 public:
  CKvMercator2SPProjection() = default;
  CKvMercator2SPProjection(const std::string& name, const std::string& branch,
                           const std::string& ellipsoid, double parallel1, double centre,
                           double falseEasting, double falseNorthing, bool canDelete = false,
                           bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetParallel1() const { return _Get(0); }
  void SetParallel1(double v) { _Set(0, v); }
  double GetCentre() const { return _Get(1); }
  void SetCentre(double v) { _Set(1, v); }
  double GetFalseEasting() const { return _Get(2); }
  void SetFalseEasting(double v) { _Set(2, v); }
  double GetFalseNorthing() const { return _Get(3); }
  void SetFalseNorthing(double v) { _Set(3, v); }
};
