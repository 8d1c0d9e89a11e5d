#pragma once

#include <string>

#include "catalogue/KvStereographicSouthPoleProjection.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Polar stereographic about the south pole with a latitude of true scale,
// the set's first parallel (EPSG method 9829, variant B); the false origin
// is the pole.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Polar Stereographic (variant B)", south pole case: t is taken of the
// mirrored latitude and N = FN + rho cos(lambda - lambda0).  The arithmetic
// is CKvStereographicNorthPole's with the pole's sign; so are the reverse's
// departures from the Guidance Note.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// Guidance Note's formulas evaluated with mpmath at 40 digits (WGS 84, true
// scale at 71 S, 50 to 90 S): forward within 1.4 nanometres, reverse within
// 3e-14 degrees.
// Domain: the whole sphere but the north pole, which lies at infinity; the
// pole itself maps to the false origin and the false origin back to 90 S
// (and the central meridian).  Longitudes are reduced to +-180 degrees about
// the central meridian, and the reverse returns them in -180..180.  A
// parallel of true scale at the pole gives k0 = 1 (variant A).  Without an
// ellipsoid every member is 0: Geo2Proj gives the false origin and Proj2Geo
// returns NaN.
// GetDerivedParameters writes k0, the scale factor at the pole that the
// latitude of true scale implies.
class KVCART_API CKvStereographicSouthPole
    : public CKvEngine<CKvStereographicSouthPole, CKvStereographicSouthPoleProjection> {
 public:
  explicit CKvStereographicSouthPole(CKvStereographicSouthPoleProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvStereographicSouthPole(const std::string& name, double standardParallel,
                            double originLongitude, double falseEasting, double falseNorthing,
                            const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  // The pole on the central meridian.
  void GetOrigin(double* lon, double* lat) override;
  // origin longitude - lon, reduced to +-180 degrees.
  double GetConvergence(double lon, double lat) override;
  // The square about the pole whose corners lie 3 degrees from it.
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  // Writes k0, the scale factor at the pole.
  void GetDerivedParameters(double* value) override;

 private:
  CKvStereographicSouthPole(const std::string& name, double standardParallel,
                            double originLongitude, double falseEasting, double falseNorthing,
                            const CKvEllipsoid* ellipsoid);

  double m_dLambda0 = 0.0;  // radians
  double m_dPhiF = 0.0;     // radians, the latitude of true scale
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_dTF = 0.0;
  double m_dMF = 0.0;
  double m_dK0 = 0.0;
  double m_dRhoPerT = 0.0;  // rho / t = a mF / tF
  KvAux::CKvConformalLatitude m_Conformal;
};
