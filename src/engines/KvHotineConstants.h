#pragma once

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvCartExport.h"

// The constants and the arithmetic of Hotine's oblique Mercator, written
// once for its three engines (CKvHotineObliqueMercator,
// CKvObliqueMercator, CKvRectifiedSkewOrthomorphic), which differ only in
// where the grid's false origin lies and in the angle from the rectified
// to the skew grid.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), sections
// "Hotine Oblique Mercator (variant A)" and "(variant B)", with the
// Guidance Note's names B, A, t0, D, F, H, G, gamma0, lambda0 and uc.  Two
// rewritings, exact in real arithmetic, keep the constants free of
// cancellation and of the special cases the Guidance Note lists:
// - G = (F - 1/F) / 2 is sqrt(D^2 - 1) SIGN(phic), which is also
//   tan(phic) sqrt((1 - e^2) / (1 - e^2 sin^2 phic)); then D = sqrt(1 +
//   G^2), ln F = asinh G, and G tan(gamma0) = G sin(alphac) / sqrt(G^2 +
//   cos^2 alphac), which is exactly +-1 at an azimuth of 90 degrees.
// - Q = H / t^B is exp(ln F + B (psi - psic)) with psi the isometric
//   latitude, and the reverse's t' becomes psi' = psic + (atanh U' - ln
//   F) / B; the latitude then comes from the conformal latitude chi = gd
//   psi' by Karney's series in n (exact in double precision), where the
//   Guidance Note's series stops at e^8.
// Variant B (false origin at the projection centre, Ec and Nc) is variant
// A with its false origin moved back along the initial line to the natural
// origin: FE = Ec - uc sin(gammac), FN = Nc - uc cos(gammac).  The two
// differ by that constant only, so the arithmetic is variant A's.
//
// Special cases, none of which divides by zero:
// - an azimuth of 90 degrees (Switzerland, Hungary): lambda0 lies 90
//   degrees / B from the centre and atan2 carries u continuously across
//   the centre, so the Guidance Note's separate formula for u is not
//   needed; uc = (A / B) pi / 2 SIGN(phic);
// - an azimuth of 0 (the initial line a meridian): gamma0 = 0 and lambda0 =
//   lambdac, the transverse Mercator of the aposphere;
// - the centre on the equator: D = 1, F = 1, G = 0, lambda0 = lambdac and
//   uc = 0 (natural origin and centre coincide); with an azimuth of 90
//   degrees as well the initial line is the equator and the projection is
//   the normal Mercator with scale kc, turned by the grid angle;
// - a centre at a pole has no initial line, and a zero scale no map: every
//   constant is NaN and so is every result.
// Longitude differences from the centre are reduced to +-180 degrees in
// both directions, so longitudes come back within 180 degrees of it.
class KVCART_API CKvHotineConstants {
 public:
  // Where the false easting and northing given to the constructor apply.
  enum EFalseOrigin {
    eNaturalOrigin,     // variant A: where the initial line meets the aposphere's equator
    eProjectionCentre,  // variant B: at the centre
  };

  // Every constant 0: an engine without an ellipsoid, whose conversions
  // return NaN.
  CKvHotineConstants() = default;
  // a and e of the ellipsoid, kc the scale on the initial line, the centre,
  // azimuth alphac and grid angle gammac in degrees, the false origin in
  // metres.
  CKvHotineConstants(double a, double e, double kc, double centerLongitude, double centerLatitude,
                     double azimuth, double gridAngle, double falseEasting, double falseNorthing,
                     EFalseOrigin origin);

  // Degrees in, metres out, and back.
  void Forward(double lon, double lat, double* x, double* y) const;
  void Inverse(double x, double y, double* lon, double* lat) const;

  // uc, metres along the initial line from the natural origin to the centre.
  double CentreOffset() const { return m_dUc; }
  // The false easting and northing at the natural origin.
  double NaturalFalseEasting() const { return m_dFE; }
  double NaturalFalseNorthing() const { return m_dFN; }

 private:
  double m_dE = 0.0;
  double m_dB = 0.0;
  double m_dAOverB = 0.0;  // A / B
  double m_dBOverA = 0.0;  // B / A
  double m_dLnF = 0.0;
  double m_dPsiC = 0.0;  // isometric latitude of the centre, -ln t0
  double m_dSinGamma0 = 0.0;
  double m_dCosGamma0 = 0.0;
  double m_dLonC = 0.0;               // centre longitude, degrees
  double m_dLambda0FromCentre = 0.0;  // lambda0 - lambdac, radians
  double m_dUc = 0.0;
  double m_dSinGammaC = 0.0;
  double m_dCosGammaC = 0.0;
  double m_dFE = 0.0;  // false origin at the natural origin
  double m_dFN = 0.0;
  KvAux::CKvConformalLatitude m_Phi;  // conformal to geodetic latitude
};
