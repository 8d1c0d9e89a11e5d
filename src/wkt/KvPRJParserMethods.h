#pragma once

// The one table of the methods' WKT parameters, shared by the reader and
// the writer of CKvPRJParser (not part of the library's interface).

#include "catalogue/KvMapProjData.h"
#include "platform/String.h"

class CKvPRJParser;

// What a parameter that is not in the text reads as.
enum class EKvWktMissing {
  eNotSet,    // the not-set value: the text is incomplete when it is required
  eZero,      // 0
  eOne,       // 1
  eAzimuth,   // the azimuth read before it (an unrotated grid)
};

// One numeric parameter of a method's WKT text.
struct SKvWktParameter {
  const char* name;     // the name written, and the first one read
  const char* altName;  // also read when `name` is absent; may be null
  double (CKvPRJParser::*get)() const;
  void (CKvPRJParser::*set)(double);
  bool required;  // the text names no method of this type without it
  EKvWktMissing missing;
  bool written;  // Format writes it
};

// A method's parameters in the order they are written, which is also the
// order they are read in.
struct SKvWktMethod {
  CKvMapProjData::EProjectionType type;
  const SKvWktParameter* params;
  int count;
  bool twoParallels;  // Parse may order the standard parallels
};

// The row of `type`, or null for a type without parameters (geographical,
// undefined, out of range).
const SKvWktMethod* KvWktMethod(CKvMapProjData::EProjectionType type);

// C-locale conversion; text that does not start a number reads as 0.
double KvWktToDouble(const CString& text);
