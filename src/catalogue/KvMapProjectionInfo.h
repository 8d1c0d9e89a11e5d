#pragma once

#include <string>

#include "platform/KvCartExport.h"

// A named handle on one entry of the projection catalogue.
class KVCART_API CKvMapProjectionInfo {
 public:
  explicit CKvMapProjectionInfo(const std::string& name) : m_strMapProjection(name) {}
  std::string GetMapProjection() const { return m_strMapProjection; }

 private:
  std::string m_strMapProjection;
};
