#include "catalogue/KvBufferList.h"

#include "mapproj/KvMapProjection.h"
#include "wkt/KvPRJParser.h"

CKvBufferList::iterator CKvBufferList::FindMapProjection(const char* name) {
  const CString wanted = CKvPRJParser::ShortName(name);
  for (iterator it = begin(); it != end(); ++it)
    if (CKvPRJParser::ShortName(*it).Compare(wanted.GetString()) == 0) return it;
  return end();
}

void CKvBufferList::TruncateToSize(int type, int count) {
  int matches = 0;
  for (iterator it = begin(); it != end(); ++it) {
    if (!CKvMapProjection::IsType(type, it->GetString())) continue;
    if (++matches >= count) {
      erase(std::next(it), end());
      return;
    }
  }
}
