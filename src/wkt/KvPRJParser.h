#pragma once

#include <string>
#include <vector>

#include "catalogue/KvMapProjData.h"
#include "datum/KvDatumShift.h"
#include "platform/KvCartExport.h"
#include "platform/String.h"

class CKvProjection;

// The flat record of a coordinate-system string in the WKT dialect of .prj
// files, with its reader and writer.
//
// The reader is deliberately not a tree parser: each field is found by a
// text search for its keyword (case-sensitive) or its quoted parameter name
// (case-insensitive) and then tokenised at fixed delimiters.  That search
// decides which strings are accepted, so it is kept exactly as it is.
// Every numeric field starts at the not-set value -1e-35 and counts as set
// when it differs from it exactly.  Numbers are read and written in the C
// locale.
class KVCART_API CKvPRJParser {
 public:
  typedef CKvMapProjData::EProjectionType EProjectionType;
  enum EAxisType { eAxis1 = 1, eAxis2 = 2 };

  explicit CKvPRJParser(const CString& text);
  explicit CKvPRJParser(const char* text);
  // Filled from an engine's or a record's TransferParameters.
  explicit CKvPRJParser(CKvProjection& engine);
  explicit CKvPRJParser(CKvMapProjData& record);
  virtual ~CKvPRJParser();

  // --- reading -------------------------------------------------------
  // Balanced brackets, more commas than "[", and "PROJCS" or "GEOGCS".
  static bool IsPRJ(const CString& text);
  // Fills the record from the source text; true when it names a method.
  // With `orderParallels`, two-parallel cones store the smaller first.
  bool Parse(bool orderParallels);
  // The COMPD_CS, PROJCS or GEOGCS name, "Local Coordinates" for the local
  // system, or the text itself.
  static CString ShortName(const CString& text);
  static CString DatumName(const CString& text);

  // The quoted name following the first `keyword`; "" when absent.
  static CString GetName(const CString& text, const char* keyword);
  // Name and number of the first `keyword[...]`; returns the text after
  // them, "" (outputs untouched) when absent.
  static CString GetNameParam(const CString& text, const char* keyword, CString& name,
                              double& value);
  static CString GetNameParam(const CString& text, const char* keyword, CString& name,
                              CString& value);
  // The number after the quoted `name` (any letter case); `def` when absent.
  static double GetParam(const CString& text, const char* name, double def);
  static double GetParam(const CString& text, const std::vector<const char*>& names, double def);

  static int _MatchBrackets(const CString& text);
  static bool _MatchCommas(const CString& text);
  static int _GetBracketLevel(const CString& text);

  // --- building and writing -----------------------------------------
  // A new engine for the record, owned by the caller; null for type 22 or a
  // method without an engine.
  CKvProjection* CreateMapProjection() const;
  // A new parameter set of the record's type, owned by the caller, or null.
  CKvMapProjData* _CreateProjData() const;
  // One-line WKT; true for types 1 to 21.
  bool Format(CString& out) const;
  // Copies the text with its NUL only when its length is below `size`.
  bool Format(char* buffer, int size) const;
  static void FormatAsReadableWKT(const CString& in, CString& out);
  std::string GetProjectionTypeTitle() const;
  int GetNoOfParameters() const;
  bool GetParameter(int index, CString& name, double& value, CString& unitName,
                    double& unitFactor) const;

  // --- accessors -----------------------------------------------------
  EProjectionType GetProjectionType() const { return m_eProjectionType; }
  void SetProjectionType(EProjectionType type) { m_eProjectionType = type; }
  CString GetProjCSname() const { return m_strProjCSName; }
  void SetProjCSname(const CString& name) { m_strProjCSName = name; }
  CString GetGeoCSname() const { return m_strGeoCSName; }
  void SetGeoCSname(const CString& name) { m_strGeoCSName = name; }
  CString GetDatum() const { return m_strDatum; }
  void SetDatum(const CString& name) { m_strDatum = name; }
  void GetPrimeMeridian(CString& name, double& value) const;
  void SetPrimeMeridian(const CString& name, double value);
  void GetAngularUnit(CString& name, double& value) const;
  void SetAngularUnit(const CString& name, double value);
  void GetEllipsoid(CString& name, double& major, double& invFlattening) const;
  void SetEllipsoid(const CString& name, double major, double invFlattening);
  void GetDatumShift(CKvDatumShift& shift) const;
  // Setting a shift, even one of zeros, makes the record say it: Format then
  // writes its TOWGS84.
  void SetDatumShift(const CKvDatumShift& shift);
  // Whether the text had a TOWGS84 or a shift was set.
  bool HasDatumShift() const { return m_bHasDatumShift; }
  CString GetProjectionTypeName() const { return m_strProjectionTypeName; }
  void SetProjectionTypeName(const CString& name) { m_strProjectionTypeName = name; }
  double GetFalseEasting() const { return m_dFalseEasting; }
  void SetFalseEasting(double v) { m_dFalseEasting = v; }
  double GetFalseNorthing() const { return m_dFalseNorthing; }
  void SetFalseNorthing(double v) { m_dFalseNorthing = v; }
  double GetCentralMeridian() const { return m_dCentralMeridian; }
  void SetCentralMeridian(double v) { m_dCentralMeridian = v; }
  double GetStandardParallel1() const { return m_dStandardParallel1; }
  void SetStandardParallel1(double v) { m_dStandardParallel1 = v; }
  double GetStandardParallel2() const { return m_dStandardParallel2; }
  void SetStandardParallel2(double v) { m_dStandardParallel2 = v; }
  double GetLatitudeOfOrigin() const { return m_dLatitudeOfOrigin; }
  void SetLatitudeOfOrigin(double v) { m_dLatitudeOfOrigin = v; }
  double GetLongitudeOfCenter() const { return m_dLongitudeOfCenter; }
  void SetLongitudeOfCenter(double v) { m_dLongitudeOfCenter = v; }
  double GetLatitudeOfCenter() const { return m_dLatitudeOfCenter; }
  void SetLatitudeOfCenter(double v) { m_dLatitudeOfCenter = v; }
  double GetAzimuth() const { return m_dAzimuth; }
  void SetAzimuth(double v) { m_dAzimuth = v; }
  double GetXYPlaneRotation() const { return m_dXYPlaneRotation; }
  void SetXYPlaneRotation(double v) { m_dXYPlaneRotation = v; }
  double GetScaleFactor() const { return m_dScaleFactor; }
  void SetScaleFactor(double v) { m_dScaleFactor = v; }
  double GetLongitudeOfSouthPole() const { return m_dLongitudeOfSouthPole; }
  void SetLongitudeOfSouthPole(double v) { m_dLongitudeOfSouthPole = v; }
  double GetLatitudeOfSouthPole() const { return m_dLatitudeOfSouthPole; }
  void SetLatitudeOfSouthPole(double v) { m_dLatitudeOfSouthPole = v; }
  double GetAngleOfRotation() const { return m_dAngleOfRotation; }
  void SetAngleOfRotation(double v) { m_dAngleOfRotation = v; }
  double GetPseudoParallel() const { return m_dPseudoParallel; }
  void SetPseudoParallel(double v) { m_dPseudoParallel = v; }
  double GetXScale() const { return m_dXScale; }
  void SetXScale(double v) { m_dXScale = v; }
  double GetYScale() const { return m_dYScale; }
  void SetYScale(double v) { m_dYScale = v; }
  void GetProjUnit(CString& name, double& value) const;
  void SetProjUnit(const CString& name, double value);
  // Axis 1 or 2; any other value leaves the outputs alone / changes nothing.
  void GetAxisInfo(EAxisType axis, CString& name, CString& direction) const;
  void SetAxisInfo(EAxisType axis, const CString& name, const CString& direction);

 private:
  void _initialize();
  void _ReadParameters(const CString& tail);

  CString m_strSource;
  CString m_strProjCSName;
  CString m_strGeoCSName;
  CString m_strDatum;
  CString m_strPrimeMeridian;
  double m_dPrimeMeridian;
  CString m_strAngularUnit;
  double m_dAngularUnit;
  CString m_strEllipsoid;
  double m_dMajor;
  double m_dInvFlattening;
  CKvDatumShift m_DatumShift;
  EProjectionType m_eProjectionType;
  CString m_strProjectionTypeName;
  double m_dFalseEasting;
  double m_dFalseNorthing;
  double m_dCentralMeridian;
  double m_dStandardParallel1;
  double m_dStandardParallel2;
  double m_dLatitudeOfOrigin;
  double m_dLongitudeOfCenter;
  double m_dLatitudeOfCenter;
  double m_dAzimuth;
  double m_dXYPlaneRotation;
  double m_dScaleFactor;
  double m_dLongitudeOfSouthPole;
  double m_dLatitudeOfSouthPole;
  double m_dAngleOfRotation;
  double m_dPseudoParallel;
  double m_dXScale;
  double m_dYScale;
  CString m_strProjUnit;
  double m_dProjUnit;
  CString m_strAxis1Name;
  CString m_strAxis1Direction;
  CString m_strAxis2Name;
  CString m_strAxis2Direction;
  bool m_bHasDatumShift;
};
