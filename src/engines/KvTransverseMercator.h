#pragma once

#include <string>

#include "engines/KvTransverseMercatorBase.h"
#include "platform/KvCartExport.h"

// Transverse Mercator (EPSG method 9807), Gauss-Krueger in the Poder/Engsager
// form: geodetic to Gaussian (conformal) latitude, then a complex Clenshaw
// summation of Krueger's series in the third flattening n, truncated after
// n^4.
//
// Formulas: K. Engsager and K. Poder, "A highly accurate world wide algorithm
// for the transverse Mercator mapping (almost)", 2007; coefficients after
// Krueger (1912).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against
// Krueger's series to n^6 with the exact conformal latitude (mpmath, 40
// digits) on WGS 84, latitudes 0 to 84: forward within 0.7 micrometres up to
// 10 degrees from the central meridian and 12 micrometres from 11 to 40
// degrees; reverse within 2.3e-11 degrees (2.5 micrometres) throughout.
// Domain: latitudes beyond +-90 continue over the pole (91 maps to 20000000
// m minus the northing 91 would otherwise have, near that of 89, and maps
// back to about 89); the southern hemisphere is the exact mirror image of
// the northern one.  A local system ("NON-UTM", also the name an unnamed
// engine takes) passes coordinates through.  Without an ellipsoid (empty or
// unknown identifier) a = b = f = 0: Geo2Proj gives the false origin and
// Proj2Geo divides by zero; this is not guarded.
// Kept on purpose: the continuation uses 20000000 m whatever the ellipsoid,
// and the point scale factor is the series as the catalogue has always
// computed it (see GetScaleFactor).
class KVCART_API CKvTransverseMercator : public CKvTransverseMercatorBase<CKvTransverseMercator> {
 public:
  explicit CKvTransverseMercator(CKvTransverseMercatorProjection* set);
  CKvTransverseMercator(const std::string& name, double scale, double centralMeridian,
                        double originLatitude, double falseEasting, double falseNorthing,
                        const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  bool IsLocal() override;

  // The catalogue's definition with this engine's own central meridian in
  // place of the catalogue's: an engine set up for one zone of a catalogue
  // entry reports that zone.
  bool GetMapProjection(CKvTransverseMercatorProjection& set);

  void _Coeffs();
  void _Geo2Proj(double lon, double lat, double falseEasting, double falseNorthing, double* x,
                 double* y);
  void _Proj2Geo(double x, double y, double falseEasting, double falseNorthing, double* lon,
                 double* lat);
  static double _Csin(const double* c, int count, double arg);
  static void _Cksin(const double* c, int count, double argReal, double argImag, double* real,
                     double* imag);

 private:
  CKvTransverseMercator(const std::string& name, double scale, double centralMeridian,
                        double originLatitude, double falseEasting, double falseNorthing,
                        const CKvEllipsoid* ellipsoid);

  double m_dN;
  double m_dArcFactor;
  double m_adCbg[4];
  double m_adCgb[4];
  double m_adGtu[4];
  double m_adUtg[4];
  bool m_bLocal;
  // The northing of the origin (central meridian, origin latitude) without
  // false northing, projected once here rather than on every call.
  double m_dOriginNorthing;
};
