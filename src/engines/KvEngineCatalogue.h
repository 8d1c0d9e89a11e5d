#pragma once

#include <string>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"
#include "platform/KvCartExport.h"
#include "wkt/KvPRJParser.h"

// The catalogue side of the engine pattern, shared by every engine: the
// bounded name copy, the ellipsoid look-up by identifier, and the look-ups
// through the engine's name that fill a parameter set or the WKT record.
class KVCART_API CKvEngineCatalogue {
 public:
  static constexpr int kNameSize = 256;

  // Copies `name` into an engine's name buffer, truncating to 255 bytes.
  static void CopyName(char* buffer, const std::string& name);
  // The catalogue's ellipsoid of identifier `id`; null for "" or unknown.
  static const CKvEllipsoid* FindEllipsoid(const std::string& id);

  // Fills `set` with the catalogue's definition named `name`; false, `set`
  // untouched, when there is none or it belongs to another method.
  template <class Set>
  static bool GetMapProjection(const char* name, Set& set) {
    const Set* found = dynamic_cast<const Set*>(CKvMapProjection::MapProjection(name));
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

  // Hands `set` to the WKT record with the catalogue's ellipsoid of the
  // system named `name`: the engines' TransferParameters.
  template <class Set>
  static void Transfer(const char* name, const Set& set, CKvPRJParser& parser) {
    CKvEllipsoid ellipsoid;
    const bool found = GetEllipsoid(name, ellipsoid);
    set.TransferWith(parser, found ? &ellipsoid : nullptr, "Meter");
  }
};
