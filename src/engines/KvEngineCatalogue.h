#pragma once

#include <string>

#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// The catalogue side of the engine pattern: the bounded name copy, the
// ellipsoid look-up by identifier, and the look-ups through the engine's
// name that fill a parameter set, all through the set-up object's
// catalogues.
class KVCART_API CKvEngineCatalogue {
 public:
  static constexpr int kNameSize = 256;

  // Copies `name` into an engine's name buffer, truncating to 255 bytes.
  static void CopyName(char* buffer, const std::string& name);
  // The catalogue's ellipsoid of identifier `id`; null for "" or unknown.
  static const CKvEllipsoid* FindEllipsoid(const std::string& id);
  // The catalogue's definition named `name`, or null.  Marks the projection
  // list modified, as every look-up of a definition that may be changed in
  // place does.
  static CKvMapProjData* FindDefinition(const char* name);

  // Fills `set` with the catalogue's definition named `name`; false, `set`
  // untouched, when there is none or it belongs to another method.
  template <class Set>
  static bool GetMapProjection(const char* name, Set& set) {
    const Set* found = dynamic_cast<const Set*>(FindDefinition(name));
    if (!found) return false;
    set.SetName(found->GetName());
    set.SetBranchName(found->GetBranchName());
    set.SetEllipsoidID(found->GetEllipsoidID());
    set.AssignParameters(*found);
    set.CopyDetailsUnlisted(*found);
    return true;
  }

  // The catalogue's ellipsoid for the system named `name`, assigned to
  // `ellipsoid`; false, argument untouched, when there is none.
  static bool GetEllipsoid(const char* name, CKvEllipsoid& ellipsoid);
};
