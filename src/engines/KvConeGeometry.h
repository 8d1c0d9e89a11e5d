#pragma once

// The plane geometry of a cone developed about its apex, which the Albers
// and equidistant conic engines share.  A cone of constant n maps a parallel
// to a circle of radius rho about the apex and a longitude difference
// dLambda to the angle theta = n dLambda.  The engines hand over
// r = n rho rather than rho, which stays finite as n goes to 0, so that a
// cone with parallels symmetric about the equator (n = 0) comes out as its
// limit, the cylinder, instead of a division by zero.

#include <cmath>

namespace KvCone {

// The easting rho sin theta of a point at radius rho = r / n and longitude
// difference dLambda (radians), and its drop rho (1 - cos theta) below the
// point of the central meridian at the same radius (negative on a southern
// cone, n < 0): both from the half angle, so that they keep their limits,
// r dLambda and 0, when n is 0.
inline void Bend(double n, double r, double dLambda, double* east, double* drop) {
  if (n == 0.0) {
    *east = r * dLambda;
    *drop = 0.0;
    return;
  }
  const double half = 0.5 * n * dLambda;
  const double s = std::sin(half), c = std::cos(half);
  const double rho = r / n;
  *east = 2.0 * rho * s * c;
  *drop = 2.0 * rho * s * s;
}

// The longitude difference theta / n (radians) of the grid offsets (dx, dy)
// from the false origin, whose radius is rho0 = r0 / n: Guidance Note 7-2's
// theta' = atan2(dx, rho0 - dy), with both arguments multiplied by n so that
// a southern cone needs no negated axes; dx / r0 on the cylinder.
inline double LongitudeDifference(double n, double r0, double dx, double dy) {
  if (n == 0.0) return dx / r0;
  return std::atan2(n * dx, r0 - n * dy) / n;
}

}  // namespace KvCone
