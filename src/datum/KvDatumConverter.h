#pragma once

#include <cstdint>

#include "datum/KvCartDef.h"
#include "platform/KvCartExport.h"

class CKvMapProjection;

// Converts points from one coordinate system (the source) to another (the
// target).  Where the datums differ the point goes through geocentric
// Cartesian coordinates: source geographic to X, Y, Z on the source
// ellipsoid, the source's shift to WGS 84, the target's shift from WGS 84
// taken backwards, then X, Y, Z to geographic on the target ellipsoid.
//
// Method: the three- or seven-parameter Helmert transformation with the
// small-angle rotation matrix in the position-vector sign convention
// (EPSG Guidance Note 7-2, "Position Vector transformation (geocentric
// domain)", method 1033).  The backward shift subtracts the translations,
// applies the transposed matrix and divides by the scale factor, so it
// undoes the forward shift only up to second order in the rotations: about
// r^2 x 6.4e6 m, 0.15 mm for one arc-second, 1 mm for 2.5 arc-seconds.
// Geographic to geocentric is exact; geocentric to geographic is
// CKvMapProjection::XYZ2Geo (CKvGeocentric), within 1e-14 degrees and a few
// nanometres of height.
//
// Shifts are taken from each system's TOWGS84 at construction: translations
// in metres, rotations in arc-seconds turned into radians, scale in parts per
// million turned into a fraction.  SetDatumShift stores its values as they
// come (radians and a fraction).
//
// The geocentric step is bypassed when the two ellipsoids are equivalent and
// the two shifts are equal, and when either system has no engine or its
// engine knows no ellipsoid (nothing to shift with); a bypassed conversion
// leaves heights alone.  It is also bypassed between two systems of the
// catalogue whose records name the same datum on equivalent ellipsoids: each
// record carries the shift to WGS 84 chosen for its own area, and two such
// shifts of one datum may differ by metres where no shift is due.  A pair in
// which either system is local ("NON-UTM") is never converted.
//
// Ownership: a converter built from two strings owns the two systems it
// builds and deep-copies them when copied.  One built from two
// CKvMapProjection pointers only refers to them; the caller keeps them alive
// for the converter's lifetime and its copies share them.  A null pointer
// stands for a system without engine: its transforms write nothing.
class KVCART_API CKvDatumConverter : public CKvCartDef {
 public:
  // Which ends are projected and which geographic.  Stored as a 32-bit
  // value; any other value makes the conversions leave points alone.
  enum ETypeOfConversion : int32_t {
    eProjToProj = 0,  // projected source to projected target
    eProjToGeo = 1,   // projected source to geographic target
    eGeoToProj = 2,   // geographic source to projected target
    eGeoToGeo = 3,    // geographic source to geographic target
  };

  // Builds both systems from coordinate-system strings.  Lets
  // std::out_of_range ("Can't use generic UTM") through; a null string
  // raises std::invalid_argument.
  CKvDatumConverter(const char* source, const char* target);
  // Refers to two systems the caller owns.
  CKvDatumConverter(CKvMapProjection* source, CKvMapProjection* target);
  CKvDatumConverter(const CKvDatumConverter& other);
  CKvDatumConverter& operator=(const CKvDatumConverter& other);
  ~CKvDatumConverter() override;

  // Source to target.  (x, y) are in the input system's units (projected, or
  // longitude and latitude in degrees) and are replaced by the output.  The
  // two-value form starts from height 0 and drops the height it reaches.
  void Convert(double& x, double& y) const;
  void Convert(double& x, double& y, double& h) const;
  // Target to source, the mirror of Convert.
  void InvConvert(double& x, double& y) const;
  void InvConvert(double& x, double& y, double& h) const;

  // Geocentric metres: the source shift forwards, then the target shift
  // backwards.  Returns the target shift's type.
  int DatumShift(double& X, double& Y, double& Z) const;
  // The target shift forwards, then the source shift backwards.  Returns
  // the source shift's type.
  int InvDatumShift(double& X, double& Y, double& Z) const;

  void SetConversionType(ETypeOfConversion type);

  bool GetBypassXYZ() const;
  // Skips the geocentric step from now on.
  void BypassXYZ();
  // Restores the bypass computed at construction and returns it.
  bool ResetBypassXYZ();

  // Replaces one end's shift: type 2 takes seven values, type 1 the three
  // translations (the other four keep what they held), type 0 none.  Values
  // are taken as they come: rotations in radians, scale as a fraction.  A
  // null `values` changes only the type.  The bypass is then recomputed from
  // the ellipsoids and the two shifts; the constructed bypass is kept.
  void SetDatumShift(ETypeOfDatumShift type, double* values, bool source);

  // Exchanges source and target with their shifts; conversion type 1
  // becomes 2 and 2 becomes 1.  Returns the new conversion type.
  ETypeOfConversion InvertOrder();

  // The source system when `source` is true, else the target system.
  CKvMapProjection* GetMapProjection(bool source) const;

 private:
  void _copy(const CKvDatumConverter& other);
  void _dealloc();
  void _init();
  void _Transform(const CKvMapProjection* from, const CKvMapProjection* to, bool fromProjected,
                  bool toProjected, bool forward, double& x, double& y, double& h) const;
  bool _ShiftsEqual() const;

  CKvMapProjection* m_pSource;
  CKvMapProjection* m_pTarget;
  ETypeOfConversion m_eConversionType;
  bool m_bSameEllipsoid;
  bool m_bBypassXYZ;
  bool m_bBypassXYZConstructed;
  bool m_bLocal;
  bool m_bOwnsSystems;
  ETypeOfDatumShift m_eSourceShiftType;
  ETypeOfDatumShift m_eTargetShiftType;
  double m_adSourceShift[7];  // tx, ty, tz (m); rx, ry, rz (rad); scale (fraction)
  double m_adTargetShift[7];
};
