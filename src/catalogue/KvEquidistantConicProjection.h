#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvEquidistantConicProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "EQUIDISTANT_CONIC_PROJECTION"
};

// Equidistant conic.
class KVCART_API CKvEquidistantConicProjection
    : public CKvParameterSet<CKvEquidistantConicProjection, 6>,
      public CKvEquidistantConicProjectionIDs {
 public:
  CKvEquidistantConicProjection() = default;
  CKvEquidistantConicProjection(const std::string& name, const std::string& branch,
                                const std::string& ellipsoid, double parallel1, double parallel2,
                                double centralMeridian, double originLatitude, double falseEasting,
                                double falseNorthing, bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetParallel1() const { return _Get(0); }
  void SetParallel1(double v) { _Set(0, v); }
  double GetParallel2() const { return _Get(1); }
  void SetParallel2(double v) { _Set(1, v); }
  double GetCentralMeridian() const { return _Get(2); }
  void SetCentralMeridian(double v) { _Set(2, v); }
  double GetOriginLatitude() const { return _Get(3); }
  void SetOriginLatitude(double v) { _Set(3, v); }
  double GetFalseEasting() const { return _Get(4); }
  void SetFalseEasting(double v) { _Set(4, v); }
  double GetFalseNorthing() const { return _Get(5); }
  void SetFalseNorthing(double v) { _Set(5, v); }
};
