#pragma once

// The inverse geodesic problem on an oblate ellipsoid of revolution (or a
// sphere): from two points, the length of the shortest path between them and
// the azimuths of that path at both ends.
//
// Formulas: C. F. F. Karney, "Algorithms for geodesics", J. Geodesy 87(1),
// 43-55, 2013.  The distance, longitude and reduced-length integrals I1, I2
// and I3 are summed as Fourier series whose coefficients A1, C1l, A2, C2l,
// A3, C3l are the paper's expansions in eps and the third flattening n to
// sixth order.  The problem is solved for the azimuth alpha1 at the first
// point by Newton's method on lambda12(alpha1), whose derivative is
// m12 / (a cos alpha2 cos beta2); the start comes from a sphere of radius
// a * wbar, or for nearly antipodal points from the astroid that the
// geodesics envelope there.  Each Newton step is kept inside a bracket of
// alpha1 and replaced by bisection when it leaves the bracket or stalls, so
// every pair converges, usually in 2 to 4 steps and never in more than 200.
// The longitude difference is taken exactly in degrees (reduced to -180..180
// with its rounding error carried) before anything goes to radians.
// Accuracy: within 25 nm of an elliptic-integral solution for WGS 84 and
// still for f = 1/50; the series are truncated at sixth order, so the error
// grows as f^7 beyond that (about 1 mm at f = 1/10).
// Domain: any two points with latitudes in -90..90 and finite longitudes, on
// an ellipsoid with 0 <= f < 1; anything else yields NaN.
// Conventions: azimuths in degrees clockwise from north, the second one being
// the direction of travel at the end point.  A point on a pole is the limit of
// points approaching it along its own meridian, so azimuths there are
// measured from that meridian.  Coincident points give 0 and the azimuth 180
// for a point north of the equator, 0 for one south of it.  Where two paths
// are equally short (points on opposite meridians, pairs symmetric about the
// equator) the one that first heads toward the pole on the first point's
// side is taken.  On the equator +0 counts as north and -0 as south.
// Kept on purpose: no prolate ellipsoids (f < 0).
class CKvGeodesicInverse {
 public:
  // a: semi-major axis in metres; f: flattening, 0 for a sphere.
  CKvGeodesicInverse(double a, double f);

  // Degrees in; metres and degrees out.
  void Solve(double lon1, double lat1, double lon2, double lat2, double& s12, double& azi1,
             double& azi2) const;

 private:
  struct SArc;

  void _Arc(double sinBeta1, double cosBeta1, double sinBeta2, double cosBeta2, double sinAlpha1,
            double cosAlpha1, SArc& arc) const;
  void _StartAlpha1(double sinBeta1, double cosBeta1, double sinBeta2, double cosBeta2,
                    double lambda12, double lambda12Supplement, double& sinAlpha1,
                    double& cosAlpha1) const;
  double _A3(double eps) const;
  void _C3(double eps, double c[5]) const;

  double m_a;    // semi-major axis
  double m_f;    // flattening
  double m_b;    // semi-minor axis, a (1 - f)
  double m_e2;   // eccentricity squared, f (2 - f)
  double m_ep2;  // second eccentricity squared, e^2 / (1 - e^2)
  double m_n;    // third flattening, f / (2 - f)
  // A3 and C3l as polynomials in eps with the n-dependence already summed:
  // A3 = sum m_A3x[j] eps^j, C3l = sum m_C3x[l-1][j-1] eps^j.
  double m_A3x[6];
  double m_C3x[5][5];
};
