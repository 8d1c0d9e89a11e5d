#pragma once

#include <algorithm>
#include <utility>

#include "datum/KvArrayType.h"
#include "platform/KvCartExport.h"

inline namespace KvCartPlatform {

// Heap buffer of T with its element count, shared by the dimensioned arrays.
//
// Contract:
// - Allocate(n) replaces the buffer by n value-initialised (for numbers:
//   zero) elements; n <= 0 leaves an empty array (null buffer, count 0).
// - Deallocate() frees the buffer and leaves the array empty.
// - SwapBuffers() exchanges buffer and count with another array in O(1).
// - Copies are deep.
template <class T>
class KVCART_API CKvArrayBase : public CKvArrayType {
 public:
  CKvArrayBase() = default;
  CKvArrayBase(const CKvArrayBase& other) : CKvArrayType(other) { _copy(other); }
  CKvArrayBase& operator=(const CKvArrayBase& other) {
    if (this != &other) {
      _dealloc();
      _copy(other);
    }
    return *this;
  }
  ~CKvArrayBase() override { _dealloc(); }

  void Allocate(int nSize) {
    _dealloc();
    if (nSize <= 0) return;
    m_pData = new T[nSize]();
    m_nSize = nSize;
  }

  void Deallocate() { _dealloc(); }

  void SwapBuffers(CKvArrayBase& other) {
    std::swap(m_pData, other.m_pData);
    std::swap(m_nSize, other.m_nSize);
  }

  T* GetData() { return m_pData; }
  const T* GetData() const { return m_pData; }
  int Size() const { return m_nSize; }

 private:
  // Expects an empty array (after construction or _dealloc).
  void _copy(const CKvArrayBase& other) {
    if (other.m_nSize <= 0) return;
    m_pData = new T[other.m_nSize];
    m_nSize = other.m_nSize;
    std::copy(other.m_pData, other.m_pData + other.m_nSize, m_pData);
  }

  void _dealloc() {
    delete[] m_pData;
    m_pData = nullptr;
    m_nSize = 0;
  }

  T* m_pData = nullptr;
  int m_nSize = 0;
};

}  // namespace KvCartPlatform
