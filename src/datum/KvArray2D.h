#pragma once

#include <climits>
#include <utility>

#include "datum/KvArrayBase.h"
#include "platform/KvAssert.h"
#include "platform/KvCartExport.h"

inline namespace KvCartPlatform {

// Two-dimensional array over CKvArrayBase<T>.  The first dimension J counts
// columns, the second K rows; each has its own first index.  J varies
// fastest: element (j, k) sits at (k - FirstK()) * SizeJ() + (j - FirstJ()),
// so the buffer holds the array row by row.
//
// Contract:
// - Allocate(firstJ, sizeJ, firstK, sizeK) replaces the contents by a
//   zero-filled array; a negative size counts as 0 (an empty array that
//   keeps its first indices).  A total that does not fit an int stops the
//   process through an assertion.
// - operator()(j, k) asserts that j and k lie inside their ranges.
// - SwapBuffers() on two 2-D arrays exchanges their dimensions as well, so
//   that the index ranges always describe the buffer.
// - Copies are deep.
template <class T>
class KVCART_API CKvArray2D : public CKvArrayBase<T> {
 public:
  CKvArray2D() = default;
  CKvArray2D(const CKvArray2D& other) : CKvArrayBase<T>() { _copy(other); }
  CKvArray2D& operator=(const CKvArray2D& other) {
    if (this != &other) {
      _dealloc();
      _copy(other);
    }
    return *this;
  }
  ~CKvArray2D() override { _dealloc(); }

  void Allocate(int nFirstJ, int nSizeJ, int nFirstK, int nSizeK) {
    if (nSizeJ < 0) nSizeJ = 0;
    if (nSizeK < 0) nSizeK = 0;
    KV_ASSERT(static_cast<long long>(nSizeJ) * nSizeK <= INT_MAX);
    CKvArrayBase<T>::Allocate(nSizeJ * nSizeK);
    m_nFirstJ = nFirstJ;
    m_nSizeJ = nSizeJ;
    m_nFirstK = nFirstK;
    m_nSizeK = nSizeK;
  }

  void Deallocate() { _dealloc(); }

  void SwapBuffers(CKvArray2D& other) {
    CKvArrayBase<T>::SwapBuffers(other);
    std::swap(m_nFirstJ, other.m_nFirstJ);
    std::swap(m_nSizeJ, other.m_nSizeJ);
    std::swap(m_nFirstK, other.m_nFirstK);
    std::swap(m_nSizeK, other.m_nSizeK);
  }

  int Dim() const override { return 2; }

  T& operator()(int j, int k) { return this->GetData()[_offset(j, k)]; }
  const T& operator()(int j, int k) const { return this->GetData()[_offset(j, k)]; }

  int FirstJ() const { return m_nFirstJ; }
  int SizeJ() const { return m_nSizeJ; }
  int FirstK() const { return m_nFirstK; }
  int SizeK() const { return m_nSizeK; }

 private:
  // Computed in long long: a first index near INT_MIN or INT_MAX must not
  // overflow the range test.
  int _offset(int j, int k) const {
    const long long nJ = static_cast<long long>(j) - m_nFirstJ;
    const long long nK = static_cast<long long>(k) - m_nFirstK;
    KV_ASSERT(nJ >= 0 && nJ < m_nSizeJ);
    KV_ASSERT(nK >= 0 && nK < m_nSizeK);
    return static_cast<int>(nK * m_nSizeJ + nJ);
  }

  void _copy(const CKvArray2D& other) {
    CKvArrayBase<T>::operator=(other);
    m_nFirstJ = other.m_nFirstJ;
    m_nSizeJ = other.m_nSizeJ;
    m_nFirstK = other.m_nFirstK;
    m_nSizeK = other.m_nSizeK;
  }

  void _dealloc() {
    CKvArrayBase<T>::Deallocate();
    m_nFirstJ = 0;
    m_nSizeJ = 0;
    m_nFirstK = 0;
    m_nSizeK = 0;
  }

  int m_nFirstJ = 0;
  int m_nSizeJ = 0;
  int m_nFirstK = 0;
  int m_nSizeK = 0;
};

}  // namespace KvCartPlatform
