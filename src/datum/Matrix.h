#pragma once

#include <cstdint>

#include "datum/KvArray2D.h"
#include "platform/KvCartExport.h"

inline namespace KvCartPlatform {

// Small dense matrix of doubles for rotations: 3-by-3 rotation matrices and
// 3-element column vectors, multiplied together.  Kept to what the rotated
// longitude/latitude engine needs.
//
// Contract:
// - Indices follow CKvArray2D: j is the column (J), k the row (K), both
//   counted from 0.
// - Operands of +, - must have equal sizes; the left operand of a product
//   must have as many columns as the right one has rows.  A mismatch is a
//   programming error and stops the process through an assertion.
// - The rotation constructor takes degrees; an axis other than 1, 2, 3
//   leaves the zero-filled 3-by-3 matrix.
// - Copies are deep.
class KVCART_API CMatrix {
 public:
  // Axis of a rotation matrix.  Fixed 32-bit so that any value a caller
  // passes is a valid enumeration value.
  enum ERotationType : int32_t {
    eRotateX = 1,
    eRotateY = 2,
    eRotateZ = 3,
  };

  CMatrix();
  // Same sizes and values as *pArray, first indices 0; pArray must not be null.
  explicit CMatrix(CKvArray2D<double>* pArray);
  // Column vector (x, y, z): 1 column, 3 rows.
  CMatrix(double x, double y, double z);
  // Right-handed rotation by dAngle degrees about the given axis.
  CMatrix(double dAngle, ERotationType eAxis);
  CMatrix(const CMatrix& other);
  CMatrix& operator=(const CMatrix& other);
  virtual ~CMatrix();

  CMatrix operator+(const CMatrix& other) const;
  CMatrix operator-(const CMatrix& other) const;
  CMatrix operator*(const CMatrix& other) const;
  CMatrix operator*(double dFactor) const;

  // Element at column j, row k.
  double& operator()(int j, int k);
  double operator()(int j, int k) const;
  double GetElement(int j, int k) const;

  CKvArray2D<double>* GetArray();
  const CKvArray2D<double>* GetArray() const;
  int GetSizeJ() const;  // columns
  int GetSizeK() const;  // rows

 private:
  CMatrix _AddScaled(const CMatrix& other, double dSign) const;
  void _copy(const CMatrix& other);
  void _dealloc();

  CKvArray2D<double> m_Array;
};

}  // namespace KvCartPlatform
