#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <vector>

#include "datum/KvArray2D.h"
#include "datum/Matrix.h"

namespace {

// Builds a matrix from rows written left to right.
CMatrix FromRows(std::initializer_list<std::vector<double>> rows) {
  CKvArray2D<double> a;
  const int nK = static_cast<int>(rows.size());
  const int nJ = nK ? static_cast<int>(rows.begin()->size()) : 0;
  a.Allocate(0, nJ, 0, nK);
  int k = 0;
  for (const std::vector<double>& row : rows) {
    for (int j = 0; j < nJ; ++j) a(j, k) = row[j];
    ++k;
  }
  return CMatrix(&a);
}

void ExpectNear(const CMatrix& actual, const CMatrix& expected, double tol, const char* what) {
  ASSERT_EQ(actual.GetSizeJ(), expected.GetSizeJ()) << what;
  ASSERT_EQ(actual.GetSizeK(), expected.GetSizeK()) << what;
  for (int k = 0; k < expected.GetSizeK(); ++k)
    for (int j = 0; j < expected.GetSizeJ(); ++j)
      EXPECT_NEAR(actual.GetElement(j, k), expected.GetElement(j, k), tol)
          << what << " at column " << j << ", row " << k;
}

const CMatrix::ERotationType kAxes[] = {CMatrix::eRotateX, CMatrix::eRotateY,
                                        CMatrix::eRotateZ};

// ---- arrays ---------------------------------------------------------------

TEST(KvArray2D, ElementsLieRowByRowFromTheFirstIndices) {
  CKvArray2D<double> a;
  a.Allocate(-1, 3, 5, 2);  // columns -1..1, rows 5..6
  EXPECT_EQ(a.Dim(), 2);
  ASSERT_EQ(a.Size(), 6);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(a.GetData()[i], 0.0) << i;  // zero-filled
  a(-1, 5) = 1;
  a(1, 5) = 2;
  a(-1, 6) = 3;
  a(1, 6) = 4;
  // (k - firstK) * sizeJ + (j - firstJ): 0, 2, 3, 5.
  const double expected[6] = {1, 0, 2, 3, 0, 4};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(a.GetData()[i], expected[i]) << i;
}

TEST(KvArray2D, NegativeSizesGiveEmptyArraysAndReallocationZeroes) {
  CKvArray2D<double> a;
  a.Allocate(0, 2, 0, 2);
  a(1, 1) = 7;
  a.Allocate(0, 2, 0, 2);
  EXPECT_EQ(a(1, 1), 0.0);  // a fresh buffer, not the old one
  for (int size : {-3, 0}) {
    a.Allocate(0, size, 0, 2);
    EXPECT_EQ(a.GetData(), nullptr);
    a.Allocate(0, 2, 0, size);
    EXPECT_EQ(a.GetData(), nullptr);
    EXPECT_EQ(a.Size(), 0);
  }
}

TEST(KvArray2DDeathTest, IndexOutsideTheRangesStops) {
  CKvArray2D<double> a;
  a.Allocate(-1, 3, 5, 2);
  EXPECT_DEATH(a(2, 5), "KvArray2D:[0-9]+: .*Assertion `nJ >= 0 && nJ < m_nSizeJ' failed");
  EXPECT_DEATH(a(-2, 5), "nJ >= 0");
  EXPECT_DEATH(a(0, 4), "nK >= 0 && nK < m_nSizeK");
  EXPECT_DEATH(a(0, 7), "nK >= 0 && nK < m_nSizeK");
}

// ---- matrices -------------------------------------------------------------

TEST(Matrix, ProductsFollowRowTimesColumn) {
  struct Case {
    const char* what;
    CMatrix left, right, expected;
  } cases[] = {
      // Hand-computed: row sums 1 - 3, 4 - 6, 7 - 9.
      {"3x3 times 3x1 is 3x1", FromRows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}), CMatrix(1, 0, -1),
       CMatrix(-2, -2, -2)},
      // Hand-computed: 1*7 + 2*9 + 3*11 = 58, 1*8 + 2*10 + 3*12 = 64, ...
      {"2x3 times 3x2 is 2x2", FromRows({{1, 2, 3}, {4, 5, 6}}),
       FromRows({{7, 8}, {9, 10}, {11, 12}}), FromRows({{58, 64}, {139, 154}})},
      // Outer product: column (1, 2, 3) times row (4, 5).
      {"3x1 times 1x2 is 3x2", CMatrix(1, 2, 3), FromRows({{4, 5}}),
       FromRows({{4, 5}, {8, 10}, {12, 15}})},
  };
  for (const Case& c : cases) ExpectNear(c.left * c.right, c.expected, 0.0, c.what);
}

TEST(Matrix, RotationsTurnAxesRightHanded) {
  const double h = std::sqrt(3.0) / 2;  // cos 30 degrees
  struct Case {
    const char* what;
    double angle;
    CMatrix::ERotationType axis;
    CMatrix in, out;
  } cases[] = {
      // Right-hand rule: x -> y about z, y -> z about x, z -> x about y.
      {"z by 90, x", 90, CMatrix::eRotateZ, CMatrix(1, 0, 0), CMatrix(0, 1, 0)},
      {"x by 90, y", 90, CMatrix::eRotateX, CMatrix(0, 1, 0), CMatrix(0, 0, 1)},
      {"y by 90, z", 90, CMatrix::eRotateY, CMatrix(0, 0, 1), CMatrix(1, 0, 0)},
      {"y by 90, x", 90, CMatrix::eRotateY, CMatrix(1, 0, 0), CMatrix(0, 0, -1)},
      {"axis itself is fixed", 37, CMatrix::eRotateX, CMatrix(2, 0, 0), CMatrix(2, 0, 0)},
      // cos 30 = sqrt(3)/2, sin 30 = 1/2.
      {"x by 30, y", 30, CMatrix::eRotateX, CMatrix(0, 1, 0), CMatrix(0, h, 0.5)},
      {"z by -30, x", -30, CMatrix::eRotateZ, CMatrix(1, 0, 0), CMatrix(h, -0.5, 0)},
      {"y by 180, (1, 2, 3)", 180, CMatrix::eRotateY, CMatrix(1, 2, 3), CMatrix(-1, 2, -3)},
  };
  for (const Case& c : cases)
    ExpectNear(CMatrix(c.angle, c.axis) * c.in, c.out, 1e-15, c.what);
}

TEST(Matrix, RotationAnglesAddAndCancel) {
  const CMatrix identity = FromRows({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  struct Case { double a, b; } cases[] = {{30, 45}, {-120, 10}, {89.5, 270}, {0, 360}};
  for (CMatrix::ERotationType axis : kAxes) {
    for (const Case& c : cases) {
      ExpectNear(CMatrix(c.a, axis) * CMatrix(c.b, axis), CMatrix(c.a + c.b, axis), 1e-15,
                 "R(a) R(b) = R(a + b)");
      ExpectNear(CMatrix(c.a, axis) * CMatrix(-c.a, axis), identity, 1e-15,
                 "R(a) R(-a) = I");
    }
  }
}

TEST(Matrix, UnknownAxisLeavesTheZeroMatrix) {
  const CMatrix zero = FromRows({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
  for (int raw : {0, 4, -1})
    ExpectNear(CMatrix(30, static_cast<CMatrix::ERotationType>(raw)), zero, 0.0, "axis");
}

TEST(Matrix, ElementwiseSumDifferenceAndScale) {
  const CMatrix a = FromRows({{1, -2}, {3.5, 0}});
  const CMatrix b = FromRows({{0.5, 4}, {-1, 8}});
  ExpectNear(a + b, FromRows({{1.5, 2}, {2.5, 8}}), 0.0, "a + b");
  ExpectNear(a - b, FromRows({{0.5, -6}, {4.5, -8}}), 0.0, "a - b");
  ExpectNear(a * -2.0, FromRows({{-2, 4}, {-7, 0}}), 0.0, "a * -2");
  ExpectNear((a + b) - b, a, 0.0, "round trip");
}

TEST(Matrix, ArrayConstructorRebasesIndicesToZeroAndCopiesAreDeep) {
  CKvArray2D<double> a;
  a.Allocate(10, 2, -4, 1);  // one row, columns 10..11
  a(10, -4) = 3;
  a(11, -4) = 4;
  CMatrix m(&a);
  a(10, -4) = 99;
  ExpectNear(m, FromRows({{3, 4}}), 0.0, "from array");
  CMatrix copy(m);
  CMatrix assigned(45, CMatrix::eRotateZ);
  assigned = m;
  m(0, 0) = -5;
  ExpectNear(copy, FromRows({{3, 4}}), 0.0, "copy");
  ExpectNear(assigned, FromRows({{3, 4}}), 0.0, "assigned");
}

TEST(MatrixDeathTest, SizeMismatchesStopWithTheCondition) {
  const CMatrix rotation(30, CMatrix::eRotateX);
  const CMatrix vector(1, 2, 3);
  const CMatrix row = FromRows({{1, 2, 3}});
  EXPECT_DEATH(vector * rotation, "Matrix:[0-9]+: .*Assertion `nJ1 == nK2' failed");
  EXPECT_DEATH(rotation + vector, "Matrix:[0-9]+: .*Assertion `nJ == pArray->SizeJ\\(\\)' failed");
  EXPECT_DEATH(rotation - vector, "Matrix:[0-9]+: .*`nJ == pArray->SizeJ\\(\\)'");
  EXPECT_DEATH(rotation + row, "Matrix:[0-9]+: .*Assertion `nK == pArray->SizeK\\(\\)' failed");
  EXPECT_DEATH(CMatrix(static_cast<CKvArray2D<double>*>(nullptr)),
               "Matrix:[0-9]+: .*Assertion `pArray' failed");
}

}  // namespace
