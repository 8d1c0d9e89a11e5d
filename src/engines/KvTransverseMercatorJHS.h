#pragma once

#include <string>

#include "engines/KvTransverseMercatorBase.h"
#include "platform/KvCartExport.h"

// Transverse Mercator (EPSG method 9807) in the formulation of EPSG Guidance
// Note 7-2 (the "JHS" series: coefficients h1..h4 in the third flattening n
// and the meridian arc M0 of the origin).  This is the engine that catalogue
// records and WKT strings of the method build.
//
// Formulas: IOGP Publication 373-7-2, section "Transverse Mercator".
// Accuracy, as measured by tools/measure_engine_accuracy.sh against
// Krueger's series to n^6 with the exact conformal latitude (mpmath, 40
// digits) on WGS 84, latitudes 0 to 84: forward within 0.2 micrometres up to
// 4 degrees from the central meridian, 0.25 micrometres up to 10 degrees and
// 12 micrometres from 11 to 40 degrees; reverse within 5e-13 degrees up to
// 10 degrees and 1.1e-11 degrees to 40 degrees.  The auxiliary angles are evaluated through identities
// equivalent to the published lines (see the .cpp), and the reverse solves
// for the isometric latitude by Newton's method instead of direct iteration.
// Domain: |lon - central meridian| < 90 degrees, |lat| <= 90; no
// continuation over the pole.  A local system ("NON-UTM", also the name an
// unnamed engine takes) passes coordinates through.  Without an ellipsoid
// (empty or unknown identifier) a = b = f = e = 0: Geo2Proj gives the false
// origin and Proj2Geo divides by zero; this is not guarded.
// Convergence, point scale and default area are those of
// CKvTransverseMercator.
class KVCART_API CKvTransverseMercatorJHS
    : public CKvTransverseMercatorBase<CKvTransverseMercatorJHS> {
 public:
  explicit CKvTransverseMercatorJHS(CKvTransverseMercatorProjection* set);
  CKvTransverseMercatorJHS(const std::string& name, double scale, double centralMeridian,
                           double originLatitude, double falseEasting, double falseNorthing,
                           const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  bool IsLocal() override;

 private:
  CKvTransverseMercatorJHS(const std::string& name, double scale, double centralMeridian,
                           double originLatitude, double falseEasting, double falseNorthing,
                           const CKvEllipsoid* ellipsoid);
  void _Coeffs();

  double m_dE;
  double m_dN;
  double m_dBigB;
  double m_adH[4];
  double m_adHInv[4];
  double m_dM0;
  bool m_bLocal;
};
