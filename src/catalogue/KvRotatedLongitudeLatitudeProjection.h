#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvRotatedLongitudeLatitudeProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "ROTATED_LONGITUDE_LATITUDE_PROJECTION"
};

// Rotated longitude/latitude (a rotated-pole grid).
//
// Kept on purpose: the fields and SetParameters run (longitude of the south
// pole, latitude of the south pole, angle of rotation) while GetParameter
// lists them the other way round; copy from one to the other reversed.
class KVCART_API CKvRotatedLongitudeLatitudeProjection
    : public CKvParameterSet<CKvRotatedLongitudeLatitudeProjection, 3>,
      public CKvRotatedLongitudeLatitudeProjectionIDs {
 public:
  CKvRotatedLongitudeLatitudeProjection() = default;
  CKvRotatedLongitudeLatitudeProjection(const std::string& name, const std::string& branch,
                                        const std::string& ellipsoid, double longitudeOfSouthPole,
                                        double latitudeOfSouthPole, double angleOfRotation,
                                        bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetLongitudeOfSouthPole() const { return _Get(0); }
  void SetLongitudeOfSouthPole(double v) { _Set(0, v); }
  double GetLatitudeOfSouthPole() const { return _Get(1); }
  void SetLatitudeOfSouthPole(double v) { _Set(1, v); }
  double GetAngleOfRotation() const { return _Get(2); }
  void SetAngleOfRotation(double v) { _Set(2, v); }
};
