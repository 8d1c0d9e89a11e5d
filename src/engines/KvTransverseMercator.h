#pragma once

#include <string>

#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvTransverseMercatorProjection;

// Transverse Mercator (EPSG method 9807), Gauss-Krueger in the Poder/Engsager
// form: geodetic to Gaussian (conformal) latitude, then a complex Clenshaw
// summation of Krueger's series in the third flattening n, truncated after
// n^4.
//
// Formulas: K. Engsager and K. Poder, "A highly accurate world wide algorithm
// for the transverse Mercator mapping (almost)", 2007; coefficients after
// Krueger (1912).  Accurate to well under a millimetre within 3900 km of the
// central meridian.
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
class KVCART_API CKvTransverseMercator : public CKvProjection {
 public:
  explicit CKvTransverseMercator(CKvTransverseMercatorProjection* set);
  CKvTransverseMercator(const std::string& name, double scale, double centralMeridian,
                        double originLatitude, double falseEasting, double falseNorthing,
                        const CKvEllipsoid& ellipsoid);

  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool IsLocal() override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;
  CKvProjection* Clone() override;
  void TransferParameters(CKvPRJParser& parser) override;

  bool GetMapProjection(CKvTransverseMercatorProjection& set);
  bool GetEllipsoid(CKvEllipsoid& ellipsoid);
  // Point scale factor at (lon, lat) in degrees, not affected by the local
  // flag.  The series as the catalogue has always computed it: the L^2 term
  // (L = dLon^2 cos^2 lat) is not divided by 24 and ends in tan^2(eta^2 lat),
  // so only its first order is the textbook value.
  double GetScaleFactor(double lon, double lat);

  void _Coeffs();
  void _Geo2Proj(double lon, double lat, double falseEasting, double falseNorthing, double* x,
                 double* y);
  void _Proj2Geo(double x, double y, double falseEasting, double falseNorthing, double* lon,
                 double* lat);
  static double _Csin(const double* c, int count, double arg);
  static void _Cksin(const double* c, int count, double argReal, double argImag, double* real,
                     double* imag);

 private:
  // The convergence and point-scale series, shared with the JHS engine,
  // which reports the same figures.
  friend class CKvTransverseMercatorJHS;
  static double _Convergence(double k0, double a, double b, double centralMeridian, double lon,
                             double lat);
  static double _PointScale(double k0, double a, double b, double centralMeridian, double lon,
                            double lat);

  char m_szName[256];
  double m_dA;
  double m_dB;
  double m_dK0;
  double m_dF;
  double m_dFalseEasting;
  double m_dFalseNorthing;
  double m_dCentralMeridian;  // degrees
  double m_dOriginLatitude;   // degrees
  double m_dN;
  double m_dArcFactor;
  double m_adCbg[4];
  double m_adCgb[4];
  double m_adGtu[4];
  double m_adUtg[4];
  bool m_bLocal;
};
