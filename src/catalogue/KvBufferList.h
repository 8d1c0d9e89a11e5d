#pragma once

#include <list>

#include "platform/KvCartExport.h"
#include "platform/String.h"

// A most-recently-used list of coordinate-system strings.
class KVCART_API CKvBufferList : public std::list<CString> {
 public:
  // The first entry whose short name equals that of `name`, or end().
  iterator FindMapProjection(const char* name);
  // Keeps the entries up to and including the `count`-th entry of kind
  // `type` (the mask of CKvMapProjection::IsType) and removes the rest.  The
  // count is tested only after a matching entry raised it, so a count of 0
  // behaves like 1; with fewer matches nothing is removed.
  void TruncateToSize(int type, int count);
};
