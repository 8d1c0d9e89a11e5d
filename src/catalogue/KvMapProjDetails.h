#pragma once

#include <cstdint>
#include <string>

#include "platform/KvCartExport.h"

class CKvDatumShift;

// What the registry knows of a catalogue record besides its method and
// parameters, each part optional:
// - its EPSG code;
// - the linear unit of a system whose coordinates are not in metres (name
//   and metres per unit);
// - the datum shift to WGS 84, 3 or 7 values in TOWGS84 order and units
//   (metres, arc-seconds, parts per million; position vector convention).
// A record without any of them behaves as it always has.  Catalogue sections
// hold them under "EPSG_Code", "Linear_Unit", "Linear_Unit_Factor" and
// "TOWGS84".
class KVCART_API CKvMapProjDetails {
 public:
  static constexpr int kMaxShiftValues = 7;

  // Nothing known.
  CKvMapProjDetails();
  CKvMapProjDetails(const CKvMapProjDetails& other);
  // Assignment that changes the code counts as a code change (see
  // GetCodeGeneration).
  CKvMapProjDetails& operator=(const CKvMapProjDetails& other);
  // Assignment for details that belong to no catalogue record (a copy made
  // to hand a record on): not counted as a code change.
  void CopyUnlisted(const CKvMapProjDetails& other);

  // 0 when the record has no code.
  int GetEpsgCode() const { return m_nEpsgCode; }
  // A code of 0 or below removes it.
  void SetEpsgCode(int code);

  bool HasLinearUnit() const { return m_dUnitFactor > 0.0; }
  // "" and 1.0 without a unit.
  const std::string& GetLinearUnitName() const { return m_strUnitName; }
  double GetLinearUnitFactor() const { return HasLinearUnit() ? m_dUnitFactor : 1.0; }
  // False, and no unit, unless `factor` is a finite number above 0.
  bool SetLinearUnit(const std::string& name, double factor);
  void ClearLinearUnit();

  bool HasDatumShift() const { return m_nShiftCount > 0; }
  // 0, 3 or 7.
  int GetDatumShiftCount() const { return m_nShiftCount; }
  // The shift as a TOWGS84 entry gives it (unused values 0); a type-0 shift
  // without one.
  void GetDatumShift(CKvDatumShift& shift) const;
  // False, and no shift, unless `count` is 3 or 7 and every value finite.
  bool SetDatumShift(const double* values, int count);
  void ClearDatumShift();

  // Every part equal: the code, the unit (name and factor) and the shift
  // (count and values), numbers exactly.
  bool operator==(const CKvMapProjDetails& other) const;
  bool operator!=(const CKvMapProjDetails& other) const { return !(*this == other); }

  // Reads the keys of a catalogue section; a missing key leaves its part
  // empty.  A key whose value does not read as its kind (a code that is not
  // a positive integer, a factor that is not a positive number, a TOWGS84
  // without 3 or 7 numbers) leaves its part empty and makes the result false.
  bool Read(void* section);
  // Adds the keys of the parts it has to the open section of `handle`.
  void Write(void* handle) const;

  // "EPSG:2278", "epsg:2278", " EPSG : 2278 ": the code; 0 for any text that
  // is not such a name or gives a code of 0 or beyond the range of int.
  static int ParseCodeName(const char* text);
  // A counter that moves whenever a record's code changes after it was set
  // (SetEpsgCode, Read, assignment), so that an index by code knows when to
  // rebuild itself.
  static std::uint64_t GetCodeGeneration();

 private:
  void _ChangeCode(int code);

  std::int32_t m_nEpsgCode;
  std::string m_strUnitName;
  double m_dUnitFactor;  // 0 when there is no unit
  std::int32_t m_nShiftCount;
  double m_adShift[kMaxShiftValues];
};
