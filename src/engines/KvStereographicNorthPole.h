#pragma once

#include <string>

#include "catalogue/KvStereographicNorthPoleProjection.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

class CKvStereographicSouthPole;

// Polar stereographic about the north pole with a latitude of true scale,
// the set's first parallel (EPSG method 9829, variant B); the false origin
// is the pole.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Polar Stereographic (variant B)": tF, mF, k0 and rho = a mF t / tF.  The
// reverse takes the conformal latitude from t' in closed form and the
// geodetic one from it by Karney's series (KvAuxiliaryLatitudes.h) in place
// of the Guidance Note's series in e^2.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// Guidance Note's formulas evaluated with mpmath at 40 digits (WGS 84, true
// scale at 71 N, 50 to 90 N): forward within 1.4 nanometres, reverse within
// 3e-14 degrees.
// Domain: the whole sphere but the south pole, which lies at infinity; the
// pole itself maps to the false origin and the false origin back to 90 N
// (and the central meridian).  Longitudes are reduced to +-180 degrees about
// the central meridian, and the reverse returns them in -180..180.  A
// parallel of true scale at the pole gives k0 = 1 (variant A).  Without an
// ellipsoid every member is 0: Geo2Proj gives the false origin and Proj2Geo
// returns NaN.
// GetDerivedParameters writes k0, the scale factor at the pole that the
// latitude of true scale implies.
class KVCART_API CKvStereographicNorthPole
    : public CKvEngine<CKvStereographicNorthPole, CKvStereographicNorthPoleProjection> {
 public:
  explicit CKvStereographicNorthPole(CKvStereographicNorthPoleProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvStereographicNorthPole(const std::string& name, double standardParallel,
                            double originLongitude, double falseEasting, double falseNorthing,
                            const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  // The pole on the central meridian.
  void GetOrigin(double* lon, double* lat) override;
  // lon - origin longitude, reduced to +-180 degrees.
  double GetConvergence(double lon, double lat) override;
  // The square about the pole whose corners lie 3 degrees from it.
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  // Writes k0, the scale factor at the pole.
  void GetDerivedParameters(double* value) override;

 private:
  // The arithmetic the engines about either pole share; `pole` is +1 for
  // the north pole, -1 for the south pole.
  friend class CKvStereographicSouthPole;
  friend class CKvStereographic;
  struct SPolar {
    double tF, mF, k0, rhoPerT;
  };
  static SPolar _Constants(double a, double e, double e2, double standardParallel, double pole);
  static void _Forward(double e, double rhoPerT, double lambda0, double FE, double FN, double pole,
                       double lon, double lat, double* x, double* y);
  static void _Inverse(const KvAux::CKvConformalLatitude& conformal, double rhoPerT, double lambda0,
                       double FE, double FN, double pole, double x, double y, double* lon,
                       double* lat);
  static double _Convergence(double lambda0, double pole, double lon);
  static void _PolarDefaultArea(CKvProjection& engine, double lon0, double pole, double* x0,
                                double* y0, double* x1, double* y1);

  CKvStereographicNorthPole(const std::string& name, double standardParallel,
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
