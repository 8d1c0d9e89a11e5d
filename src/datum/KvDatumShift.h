#pragma once

#include "datum/KvCartDef.h"
#include "platform/KvCartExport.h"

// Parameters of a shift from a datum to WGS 84, as a TOWGS84 entry gives
// them: translations X, Y, Z, rotations X, Y, Z and scale, in that order.
//
// Contract:
// - A default or reset shift has type eNoShift and seven zeros.
// - Setting the seven values derives the type: any non-zero rotation or scale
//   makes e7Parameter, otherwise any non-zero translation makes e3Parameter,
//   otherwise eNoShift.  Zero is tested exactly.  A null pointer resets.
// - The constructor that is handed a type keeps it as given, unchecked.
// - Equality compares only the values the type uses (none, the first three or
//   all seven), each by the 1e-12 relative closeness rule; shifts of
//   different types are never equal.  A type outside the three known ones
//   compares all seven values.
// - The member layout (type, then the seven values) is read by host programs
//   and must not change.
class KVCART_API CKvDatumShift : public CKvCartDef {
 public:
  static constexpr int kValueCount = 7;

  CKvDatumShift();
  explicit CKvDatumShift(double* pdValues);
  CKvDatumShift(ETypeOfDatumShift eType, double dx, double dy, double dz, double rx,
                double ry, double rz, double scale);
  CKvDatumShift(const CKvDatumShift&) = default;
  CKvDatumShift& operator=(const CKvDatumShift&) = default;
  ~CKvDatumShift() override;

  void Reset();
  void SetParameters(double* pdValues);

  // The seven values in TOWGS84 order.
  double* GetParameters();
  const double* GetParameters() const;
  // Value i (0..6); 0.0 for any other index.
  double operator[](long i) const;

  ETypeOfDatumShift GetType() const;
  // "None", "3 parameter", "7 parameter", or "" for any other stored type.
  const char* GetTypeAsText() const;

  bool operator==(const CKvDatumShift& other) const;
  bool operator!=(const CKvDatumShift& other) const;

 private:
  ETypeOfDatumShift m_eType;
  double m_adValues[kValueCount];
};
