#pragma once

#include <string>

#include "catalogue/KvKrovakProjection.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Krovak oblique conformal conic (EPSG method 9819), and through the
// set's X scale, Y scale and XY plane rotation its east-north form (EPSG
// method 1041, S-JTSK / Krovak East North) as the ESRI form of the method
// defines them.  The ellipsoid is mapped conformally to the Gauss sphere,
// the sphere turned so that the cone's axis, at co-latitude alphac from the
// pole along the meridian of origin, becomes its pole, and the sphere
// projected on the cone that touches the pseudo standard parallel phiP with
// scale kP.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Krovak", with its names A, B, gamma0, t0, n, r0, U, V, T, D, theta, r,
// Xp and Yp.  Rewritten, exactly in real arithmetic: U, T and the radius go
// through isometric latitudes (tan(U/2 + pi/4) = exp psiU with psiU =
// B psi + ln t0, and r = r0 exp(n (psiP - psiT))), and D is taken by atan2
// so that it keeps its quadrant; the reverse returns from the Gauss sphere
// in closed form, psi = (psiU - ln t0) / B, and to the latitude from the
// conformal latitude gd psi by Karney's series in n (exact in double
// precision), where the Guidance Note iterates.
// Axes: the method gives Xp (southing) and Yp (westing), positive over
// Czechia and Slovakia.  With X scale sx, Y scale sy and rotation omega the
// engine returns x = sx Xp cos omega - sy Yp sin omega + FE and
// y = sx Xp sin omega + sy Yp cos omega + FN: (1, 1, 0) is EPSG 9819's
// southing and westing, (-1, 1, 90) the east-north form, easting -Yp and
// northing -Xp.  The false easting and northing are added last, to the
// engine's x and y (every published Krovak system has them 0).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// Guidance Note's formulas as published evaluated with mpmath at 40 digits,
// the reverse's latitude iterated (S-JTSK, 8 to 28 E, 44 to 56 N): forward
// within 13 nanometres, reverse within 1e-13 degrees.  Over Czechia and
// Slovakia it agrees with PROJ 9.1.1 within 2 micrometres and 1e-10 degrees
// (tests/data/engines/oblique_mercator_krovak_area.cases).
// Domain: every point but the antipode of the cone's axis on the Gauss
// sphere, which lies at infinity; the axis itself, the cone's apex, maps to
// Xp = Yp = 0.  Longitudes are reduced to +-180 degrees about the longitude
// of origin.  A pseudo standard parallel on the equator (no cone) or no
// ellipsoid give NaN both ways; a zero scale on the pseudo parallel or a zero
// X or Y scale give NaN from the reverse, while the forward gives the map
// shrunk to a point or flattened, as the formulas do.
// GetOrigin is the projection centre.  The convergence is that of the grid
// whatever its output axes: the angle from true north to the grid's north,
// the direction of -Xp, measured numerically over one arc-minute of
// meridian centred on the point (within 1e-7 degrees of PROJ's).  The
// default area is the centre +-3 degrees, its corners ordered so that
// x0 < x1 and y0 < y1 in any orientation of the axes.
class KVCART_API CKvKrovak : public CKvEngine<CKvKrovak, CKvKrovakProjection> {
 public:
  explicit CKvKrovak(CKvKrovakProjection* set);
  // Angles in degrees, false easting and northing in metres, in the order
  // of the set's parameters.
  CKvKrovak(const std::string& name, double scaleAtPseudoParallel, double pseudoParallel,
            double centerLongitude, double centerLatitude, double azimuth, double xyPlaneRotation,
            double xScale, double yScale, double falseEasting, double falseNorthing,
            const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;

 private:
  CKvKrovak(const std::string& name, double scaleAtPseudoParallel, double pseudoParallel,
            double centerLongitude, double centerLatitude, double azimuth, double xyPlaneRotation,
            double xScale, double yScale, double falseEasting, double falseNorthing,
            const CKvEllipsoid* ellipsoid);
  // The method's southing and westing, Xp and Yp, of a point in degrees.
  void _Forward(double lon, double lat, double* Xp, double* Yp) const;

  double m_dKP = 0.0;       // scale on the pseudo standard parallel
  double m_dPhiP = 0.0;     // pseudo standard parallel, radians
  double m_dLambdaO = 0.0;  // longitude of origin, radians
  double m_dPhiC = 0.0;     // latitude of the centre, radians
  double m_dAlphaC = 0.0;   // co-latitude of the cone axis, radians
  double m_dOmega = 0.0;    // XY plane rotation, radians
  double m_dXScale = 0.0;
  double m_dYScale = 0.0;
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  // Derived: B, ln t0, n, r0 exp(n psiP), the sines and cosines of alphac
  // and omega, the longitude of origin in degrees, the latitude series.
  double m_dB = 0.0;
  double m_dLnT0 = 0.0;
  double m_dN = 0.0;
  double m_dR0 = 0.0;
  double m_dSinAlphaC = 0.0;
  double m_dCosAlphaC = 0.0;
  double m_dSinOmega = 0.0;
  double m_dCosOmega = 0.0;
  double m_dLonO = 0.0;
  KvAux::CKvConformalLatitude m_Phi;  // conformal to geodetic latitude
};
