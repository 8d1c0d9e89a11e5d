#pragma once

#include "platform/KvCartExport.h"

// The fixed series of the New Zealand map grid (EPSG method 9811), as
// published for the grid with the International 1924 ellipsoid: W. I.
// Reilly, "A conformal mapping projection with minimum scale error", Survey
// Review 22 (1973); also EPSG Guidance Note 7-2, "New Zealand Map Grid".
//
// Each coefficient is a named constant, and each series is also an array in
// index order starting at n = 1 (the n = 0 terms are all zero and are not
// stored): A[n - 1] = A_n, D[n - 1] = D_n, and for the complex series the
// real and imaginary parts side by side, B[2(n - 1)] = Re B_n,
// B[2(n - 1) + 1] = Im B_n (likewise C).
class KVCART_API CKvNewZealandMapGridConstants {
 public:
  // Latitude difference (units of 1e5 arc-seconds) to isometric latitude
  // difference.
  static constexpr double A1 = 0.6399175073;
  static constexpr double A2 = -0.1358797613;
  static constexpr double A3 = 0.063294409;
  static constexpr double A4 = -0.02526853;
  static constexpr double A5 = 0.0117879;
  static constexpr double A6 = -0.0055161;
  static constexpr double A7 = 0.0026906;
  static constexpr double A8 = -0.001333;
  static constexpr double A9 = 0.00067;
  static constexpr double A10 = -0.00034;

  // Forward complex series, Re and Im of B_n.
  static constexpr double B1re = 0.7557853228;
  static constexpr double B1im = 0.0;
  static constexpr double B2re = 0.249204646;
  static constexpr double B2im = 0.003371507;
  static constexpr double B3re = -0.001541739;
  static constexpr double B3im = 0.04105856;
  static constexpr double B4re = -0.10162907;
  static constexpr double B4im = 0.01727609;
  static constexpr double B5re = -0.26623489;
  static constexpr double B5im = -0.36249218;
  static constexpr double B6re = -0.6870983;
  static constexpr double B6im = -1.1651967;

  // First estimate of the inverse, Re and Im of C_n.
  static constexpr double C1re = 1.3231270439;
  static constexpr double C1im = 0.0;
  static constexpr double C2re = -0.577245789;
  static constexpr double C2im = -0.007809598;
  static constexpr double C3re = 0.508307513;
  static constexpr double C3im = -0.112208952;
  static constexpr double C4re = -0.15094762;
  static constexpr double C4im = 0.18200602;
  static constexpr double C5re = 1.01418179;
  static constexpr double C5im = 1.64497696;
  static constexpr double C6re = 1.9660549;
  static constexpr double C6im = 2.5127645;

  // Isometric latitude difference back to latitude difference.
  static constexpr double D1 = 1.5627014243;
  static constexpr double D2 = 0.5185406398;
  static constexpr double D3 = -0.03333098;
  static constexpr double D4 = -0.1052906;
  static constexpr double D5 = -0.0368594;
  static constexpr double D6 = 0.007317;
  static constexpr double D7 = 0.0122;
  static constexpr double D8 = 0.00394;
  static constexpr double D9 = -0.0013;

  static constexpr int kNumA = 10;
  static constexpr int kNumB = 6;
  static constexpr int kNumC = 6;
  static constexpr int kNumD = 9;

  static const double A[kNumA];
  static const double B[2 * kNumB];
  static const double C[2 * kNumC];
  static const double D[kNumD];
};
