#pragma once

#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

class CKvPRJParser;
class CKvProjection;

// The one place where a projection type meets its engine: which engine a
// parameter set creates, and how the values of a parsed WKT record become
// the arguments of that engine's explicit constructor.  Both return a new
// engine owned by the caller, or null for a type without an engine.
class KVCART_API CKvEngineTable {
 public:
  // The engine of `set`'s method, built from the set (CreateProjection).
  static CKvProjection* Create(CKvMapProjData& set);
  // The engine of a parsed record, built from its values with angles in
  // degrees and lengths in metres, and asked once for its derived parameter
  // (CKvPRJParser::CreateMapProjection).
  static CKvProjection* Create(const CKvPRJParser& record);
};
