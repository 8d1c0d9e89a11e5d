#pragma once

#include "platform/KvCartExport.h"

inline namespace KvCartPlatform {

// Root of the array family: lets code hold and delete any array through one
// pointer and ask how many dimensions it has.
class KVCART_API CKvArrayType {
 public:
  CKvArrayType() = default;
  CKvArrayType(const CKvArrayType&) = default;
  CKvArrayType& operator=(const CKvArrayType&) = default;
  virtual ~CKvArrayType();

  // Number of index dimensions of the concrete array.
  virtual int Dim() const = 0;
};

}  // namespace KvCartPlatform
