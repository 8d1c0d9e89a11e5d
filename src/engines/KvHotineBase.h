#pragma once

#include <string>

#include "engines/KvEngine.h"
#include "engines/KvHotineConstants.h"
#include "platform/KvCartExport.h"
#include "platform/KvConstants.h"

// What the three Hotine oblique Mercator engines share: their members (the
// centre, the azimuth of the initial line, the grid angle, the scale on the
// initial line and the false origin, then the constants) and every slot but
// the constructors.  Each engine says only where its false origin lies and
// which grid angle it takes (KvHotineConstants.h has the arithmetic).
//
// GetOrigin is the projection centre; the convergence is measured
// numerically (the bearing of the image of one arc-minute of meridian); the
// default area is the centre +-3 degrees.
template <class Engine, class Set>
class KVCART_API CKvHotineBase : public CKvEngine<Engine, Set> {
 public:
  void Geo2Proj(double lon, double lat, double* x, double* y) override {
    m_Hotine.Forward(lon, lat, x, y);
  }
  void Proj2Geo(double x, double y, double* lon, double* lat) override {
    m_Hotine.Inverse(x, y, lon, lat);
  }
  void GetOrigin(double* lon, double* lat) override {
    *lon = m_dLambdaC * KvConst::kRadToDeg;
    *lat = m_dPhiC * KvConst::kRadToDeg;
  }
  double GetConvergence(double lon, double lat) override {
    return this->_NumericalConvergence(lon, lat);
  }
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override {
    this->_DefaultAreaAroundOrigin(x0, y0, x1, y1);
  }

 protected:
  // Angles in degrees, lengths in metres; `origin` says where the false
  // easting and northing apply.  Without an ellipsoid only the name is set.
  CKvHotineBase(const std::string& name, double scale, double centerLongitude,
                double centerLatitude, double azimuth, double gridAngle, double falseEasting,
                double falseNorthing, CKvHotineConstants::EFalseOrigin origin,
                const CKvEllipsoid* ellipsoid)
      : CKvEngine<Engine, Set>(name) {
    if (!ellipsoid) return;
    this->_SetEllipsoid(*ellipsoid);
    m_dLambdaC = centerLongitude * KvConst::kDegToRad;
    m_dPhiC = centerLatitude * KvConst::kDegToRad;
    m_dAlphaC = azimuth * KvConst::kDegToRad;
    m_dGammaC = gridAngle * KvConst::kDegToRad;
    m_dK0 = scale;
    m_dFalseEasting = falseEasting;
    m_dFalseNorthing = falseNorthing;
    m_Hotine = CKvHotineConstants(this->m_dA, this->m_dE, scale, centerLongitude, centerLatitude,
                                  azimuth, gridAngle, falseEasting, falseNorthing, origin);
  }

  double m_dLambdaC = 0.0;  // radians
  double m_dPhiC = 0.0;     // radians
  double m_dAlphaC = 0.0;   // azimuth of the initial line, radians
  double m_dGammaC = 0.0;   // from the rectified to the skew grid, radians
  double m_dK0 = 0.0;
  double m_dFalseEasting = 0.0;  // where the engine's method puts it
  double m_dFalseNorthing = 0.0;
  CKvHotineConstants m_Hotine;
};
