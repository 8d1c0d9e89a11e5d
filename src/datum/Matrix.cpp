#include "datum/Matrix.h"

#include <cmath>

#include "platform/KvAssert.h"
#include "platform/KvConstants.h"

CMatrix::CMatrix() = default;

CMatrix::CMatrix(CKvArray2D<double>* pArray) {
  KV_ASSERT(pArray);
  const int nJ = pArray->SizeJ();
  const int nK = pArray->SizeK();
  m_Array.Allocate(0, nJ, 0, nK);
  // The source may start its indices anywhere; ours start at 0.
  for (int k = 0; k < nK; ++k)
    for (int j = 0; j < nJ; ++j)
      m_Array(j, k) = (*pArray)(pArray->FirstJ() + j, pArray->FirstK() + k);
}

CMatrix::CMatrix(double x, double y, double z) {
  m_Array.Allocate(0, 1, 0, 3);
  m_Array(0, 0) = x;
  m_Array(0, 1) = y;
  m_Array(0, 2) = z;
}

CMatrix::CMatrix(double dAngle, ERotationType eAxis) {
  m_Array.Allocate(0, 3, 0, 3);
  const double dRad = dAngle * KvConst::kDegToRad;
  const double c = std::cos(dRad);
  const double s = std::sin(dRad);
  // Rows as written; the element call takes (column, row).
  const double* pdRows = nullptr;
  const double adX[9] = {1, 0, 0, 0, c, -s, 0, s, c};
  const double adY[9] = {c, 0, s, 0, 1, 0, -s, 0, c};
  const double adZ[9] = {c, -s, 0, s, c, 0, 0, 0, 1};
  switch (eAxis) {
    case eRotateX:
      pdRows = adX;
      break;
    case eRotateY:
      pdRows = adY;
      break;
    case eRotateZ:
      pdRows = adZ;
      break;
  }
  if (pdRows == nullptr) return;
  for (int k = 0; k < 3; ++k)
    for (int j = 0; j < 3; ++j) m_Array(j, k) = pdRows[3 * k + j];
}

CMatrix::CMatrix(const CMatrix& other) { _copy(other); }

CMatrix& CMatrix::operator=(const CMatrix& other) {
  if (this != &other) {
    _dealloc();
    _copy(other);
  }
  return *this;
}

CMatrix::~CMatrix() { _dealloc(); }

CMatrix CMatrix::operator+(const CMatrix& other) const {
  const CKvArray2D<double>* pArray = &other.m_Array;
  const int nJ = m_Array.SizeJ();
  const int nK = m_Array.SizeK();
  KV_ASSERT(nJ == pArray->SizeJ());
  KV_ASSERT(nK == pArray->SizeK());
  return _AddScaled(other, 1.0);
}

CMatrix CMatrix::operator-(const CMatrix& other) const {
  const CKvArray2D<double>* pArray = &other.m_Array;
  const int nJ = m_Array.SizeJ();
  const int nK = m_Array.SizeK();
  KV_ASSERT(nJ == pArray->SizeJ());
  KV_ASSERT(nK == pArray->SizeK());
  return _AddScaled(other, -1.0);
}

// x + (-1)y is exactly x - y in floating point, so one loop serves both.
CMatrix CMatrix::_AddScaled(const CMatrix& other, double dSign) const {
  CMatrix result(*this);
  for (int k = 0; k < m_Array.SizeK(); ++k)
    for (int j = 0; j < m_Array.SizeJ(); ++j) result.m_Array(j, k) += dSign * other.m_Array(j, k);
  return result;
}

CMatrix CMatrix::operator*(const CMatrix& other) const {
  const int nJ1 = m_Array.SizeJ();
  const int nK1 = m_Array.SizeK();
  const int nJ2 = other.m_Array.SizeJ();
  const int nK2 = other.m_Array.SizeK();
  KV_ASSERT(nJ1 == nK2);
  CMatrix result;
  result.m_Array.Allocate(0, nJ2, 0, nK1);
  for (int k = 0; k < nK1; ++k) {
    for (int j = 0; j < nJ2; ++j) {
      double dSum = 0.0;
      for (int i = 0; i < nJ1; ++i) dSum += m_Array(i, k) * other.m_Array(j, i);
      result.m_Array(j, k) = dSum;
    }
  }
  return result;
}

CMatrix CMatrix::operator*(double dFactor) const {
  CMatrix result(*this);
  double* pd = result.m_Array.GetData();
  for (int i = 0; i < result.m_Array.Size(); ++i) pd[i] *= dFactor;
  return result;
}

double& CMatrix::operator()(int j, int k) { return m_Array(j, k); }

double CMatrix::operator()(int j, int k) const { return m_Array(j, k); }

double CMatrix::GetElement(int j, int k) const { return m_Array(j, k); }

CKvArray2D<double>* CMatrix::GetArray() { return &m_Array; }

const CKvArray2D<double>* CMatrix::GetArray() const { return &m_Array; }

int CMatrix::GetSizeJ() const { return m_Array.SizeJ(); }

int CMatrix::GetSizeK() const { return m_Array.SizeK(); }

void CMatrix::_copy(const CMatrix& other) { m_Array = other.m_Array; }

void CMatrix::_dealloc() { m_Array.Deallocate(); }
