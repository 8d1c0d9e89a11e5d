#pragma once

#include <string>

#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Grid convergence and point scale of the transverse Mercator, the figures
// both of its engines report.  Degrees in, convergence in degrees out.
namespace KvTransverseMercatorSeries {

// gamma = dLon sin phi [1 + dLon^2 cos^2 phi ((1 + 3 eta^2 + 2 eta^4) / 3 +
// dLon^2 cos^2 phi (2 - tan^2 phi) / 15)], the leading dLon in degrees.
KVCART_API double Convergence(double k0, double a, double b, double centralMeridian, double lon,
                              double lat);
// The point-scale series as the catalogue has always computed it: its L^2
// term (L = dLon^2 cos^2 phi) is not divided by 24 and ends in
// tan^2(eta^2 phi), so only its first order is the textbook value.
KVCART_API double PointScale(double k0, double a, double b, double centralMeridian, double lon,
                             double lat);

}  // namespace KvTransverseMercatorSeries

// What the two transverse Mercator engines share besides their series: the
// members up to the origin latitude (a, b, k0 and f in place of the common
// ellipsoid members), the name of the local system for an unnamed engine,
// and every slot but the projection itself.  Each engine keeps its local
// flag last and answers IsLocal from it.
template <class Engine>
class KVCART_API CKvTransverseMercatorBase
    : public CKvNamedEngine<Engine, CKvTransverseMercatorProjection> {
 public:
  // Central meridian and origin latitude, degrees as stored.
  void GetOrigin(double* lon, double* lat) override {
    *lon = m_dCentralMeridian;
    *lat = m_dOriginLatitude;
  }
  // 0 for the local system.
  double GetConvergence(double lon, double lat) override {
    if (this->IsLocal()) return 0.0;
    return KvTransverseMercatorSeries::Convergence(m_dK0, m_dA, m_dB, m_dCentralMeridian, lon, lat);
  }
  // The local system's area is (0, 0) to (10000, 10000); otherwise the
  // origin +-3 degrees, latitudes clamped to +-90.
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override {
    if (this->IsLocal()) {
      *x0 = 0.0;
      *y0 = 0.0;
      *x1 = 10000.0;
      *y1 = 10000.0;
      return;
    }
    this->_DefaultAreaAroundOrigin(x0, y0, x1, y1);
  }
  // Only with an ellipsoid (a > 0); a sphere's inverse flattening is 0.
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override {
    if (!(m_dA > 0.0)) return false;
    ellipsoid.SetParams(m_dA, m_dF == 0.0 ? 0.0 : 1.0 / m_dF);
    return true;
  }
  // Point scale factor at (lon, lat) in degrees, whatever the local flag.
  double GetScaleFactor(double lon, double lat) {
    return KvTransverseMercatorSeries::PointScale(m_dK0, m_dA, m_dB, m_dCentralMeridian, lon, lat);
  }

 protected:
  // An empty name becomes the local system's.  The parameters are taken
  // whether or not there is an ellipsoid; without one a, b and f stay 0.
  CKvTransverseMercatorBase(const std::string& name, double scale, double centralMeridian,
                            double originLatitude, double falseEasting, double falseNorthing,
                            const CKvEllipsoid* ellipsoid)
      : CKvNamedEngine<Engine, CKvTransverseMercatorProjection>(
            name.c_str()[0] == '\0' ? std::string(CKvMapProjectionList::LocalName()) : name),
        m_dK0(scale),
        m_dFalseEasting(falseEasting),
        m_dFalseNorthing(falseNorthing),
        m_dCentralMeridian(centralMeridian),
        m_dOriginLatitude(originLatitude) {
    if (!ellipsoid) return;
    m_dA = ellipsoid->GetMajor();
    m_dB = ellipsoid->GetMinor();
    m_dF = ellipsoid->GetFlatness();
  }
  // Whether the engine's name is the local system's, fixed at construction.
  bool _NameIsLocal() const { return CKvMapProjectionList::IsLocalName(this->m_szName); }

  double m_dA = 0.0;
  double m_dB = 0.0;
  double m_dK0;
  double m_dF = 0.0;
  double m_dFalseEasting;
  double m_dFalseNorthing;
  double m_dCentralMeridian;  // degrees
  double m_dOriginLatitude;   // degrees
};
