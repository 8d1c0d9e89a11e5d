#pragma once

#include <string>

#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvMapProjDetails;
class CKvPRJParser;

// How a parameter may also be spelled in a catalogue section.  The
// alternative key is looked for first; the plain key is what gets written.
enum class EKvAltKey {
  eNone,            // plain key only
  eDms,             // "<key>_dms": degrees, minutes, seconds
  eFootUs,          // "<key>_ft_us": US survey feet
  eScaleReduction,  // "Scale_Reduction" R: scale (R - 1) / R
};

// One numeric parameter of a parameter set.
struct SKvParameterRow {
  const char* label;  // GetParameter's label, e.g. "Scale:"
  CKvMapProjData::EParamType kind;
  const std::string* key;     // plain decimal key
  const std::string* altKey;  // null when `alt` is eNone
  EKvAltKey alt;
  void (CKvPRJParser::*transfer)(double);  // the WKT record's setter
  double (CKvPRJParser::*fetch)() const;   // and its getter
};

// The setter and getter of one field of the WKT record, for a table entry.
#define KV_PRJ_FIELD(Field) &CKvPRJParser::Set##Field, &CKvPRJParser::Get##Field

// Everything in which one parameter set differs from another.
struct SKvParameterSetInfo {
  const std::string* section;     // section name written and read
  const std::string* oldSection;  // also accepted when reading; may be null
  const char* title;
  CKvMapProjData::EProjectionType type;
  const char* wktName;
  const SKvParameterRow* params;  // in field order, which is also file order
  int count;
  bool reversedDisplay;  // GetParameter lists the fields last to first
  bool angularUnit;      // the system's unit is the degree, not the metre
};

// The logic shared by all parameter sets, driven by their tables.
class KVCART_API CKvParameterTable {
 public:
  // Reads the three strings, the values of `info` and the registry's
  // details from a section.  A value whose keys are all missing becomes 0.0,
  // a missing string "", a missing detail nothing.
  static void Read(void* section, const SKvParameterSetInfo& info, std::string& name,
                   std::string& branch, std::string& ellipsoid, double* values,
                   CKvMapProjDetails& details);
  // Whether every value of `info` that a section holds reads as its kind:
  // a finite number (degrees and minutes of a "_dms" key whole numbers), and
  // the registry's details as CKvMapProjDetails::Read wants them, so that
  // Read takes nothing as 0 or as missing that the file says otherwise.
  // False with the reason ("path:line: 'Scale' is 'abc', not a finite
  // number") otherwise.
  static bool Check(void* section, const SKvParameterSetInfo& info, std::string& reason);
  // The same for one key: true when the section lacks it or its first value
  // is a finite number.
  static bool CheckNumber(void* section, const char* key, std::string& reason);
  // Adds a section holding the strings, the values under their plain keys
  // and the details the record has.
  static void Write(void* handle, const SKvParameterSetInfo& info, const std::string& name,
                    const std::string& branch, const std::string& ellipsoid, const double* values,
                    const CKvMapProjDetails& details);
  // Hands a definition to the WKT record: TransferHead, TransferValues and
  // TransferTail.  Without an ellipsoid the record is typed "Non_Projected"
  // but still gets every value.  A linear unit in the details replaces
  // `unitName` (a length unit only: the geographic sets keep their degree)
  // and turns the lengths into that unit; a datum shift in the details
  // becomes the record's TOWGS84.
  static void Transfer(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                       const std::string& name, const std::string& branch,
                       const CKvEllipsoid* ellipsoid, const double* values, const char* unitName,
                       const CKvMapProjDetails& details);
  // The system's and geographic system's names, the datum (the branch),
  // prime meridian, angular unit, ellipsoid and method.
  static void TransferHead(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                           const std::string& name, const std::string& branch,
                           const CKvEllipsoid* ellipsoid);
  // The method's values, through the rows' setters in field order, lengths
  // in the details' linear unit.
  static void TransferValues(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                             const double* values, const CKvMapProjDetails& details);
  // The system's unit and the details' datum shift.
  static void TransferTail(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                           const char* unitName, const CKvMapProjDetails& details);
  // The catalogue's ellipsoid of identifier `id`, or null ("" gives null).
  static const CKvEllipsoid* FindEllipsoid(const std::string& id);
  static bool GetParameter(const SKvParameterSetInfo& info, const double* values, int index,
                           std::string& label, double& value, CKvMapProjData::EParamType& kind);
  // D + s M / 60 + s S / 3600 with s the sign of the degrees alone; the file
  // is meant to hold minutes and seconds unsigned and they are not corrected.
  static double DmsToDegrees(int degrees, int minutes, double seconds);
};
