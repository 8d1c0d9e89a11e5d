#pragma once

// The engines whose published formulas differ between the sphere and the
// ellipsoid (Albers, Lambert azimuthal equal area, Cassini-Soldner,
// equidistant conic) own one formula-variant object: Sphere when the
// inverse flattening is 0 or less, Ellipsoid otherwise.  This base owns it:
// the engine's copy constructor and assignment copy the variant (never
// share it), the destructor deletes it, and the slots that the variant
// answers are forwarded to it.  The engine builds the variant in its
// constructor, after _SetEllipsoid.  Without an ellipsoid there is no variant:
// Geo2Proj and Proj2Geo return NaN, GetOrigin and GetDefaultArea zeros.
// Members: the common five of CKvEngine, then the variant pointer.

#include <algorithm>
#include <cmath>
#include <string>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvEngine.h"
#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"
#include "platform/KvConstants.h"

template <class Engine, class Set, class Sphere, class Ellipsoid>
class KVCART_API CKvVariantEngine : public CKvEngine<Engine, Set> {
  typedef CKvEngine<Engine, Set> Base;

 public:
  CKvVariantEngine(const CKvVariantEngine& other) : Base(other) { _copy(other); }
  CKvVariantEngine& operator=(const CKvVariantEngine& other) {
    if (this != &other) {
      Base::operator=(other);
      _dealloc();
      _copy(other);
    }
    return *this;
  }
  ~CKvVariantEngine() override { _dealloc(); }

  void Geo2Proj(double lon, double lat, double* x, double* y) override {
    if (!m_pProj) {
      *x = *y = KvConst::kNaN;
      return;
    }
    m_pProj->Geo2Proj(lon, lat, x, y);
  }
  void Proj2Geo(double x, double y, double* lon, double* lat) override {
    if (!m_pProj) {
      *lon = *lat = KvConst::kNaN;
      return;
    }
    m_pProj->Proj2Geo(x, y, lon, lat);
  }
  void GetOrigin(double* lon, double* lat) override {
    if (!m_pProj) return CKvProjection::GetOrigin(lon, lat);
    m_pProj->GetOrigin(lon, lat);
  }
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override {
    if (!m_pProj) return CKvProjection::GetDefaultArea(x0, y0, x1, y1);
    m_pProj->GetDefaultArea(x0, y0, x1, y1);
  }
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override {
    if (!m_pProj) return Base::GetAnonymousEllipsoid(ellipsoid);
    return m_pProj->GetAnonymousEllipsoid(ellipsoid);
  }

 protected:
  explicit CKvVariantEngine(const std::string& name) : Base(name) {}

  // The bearing of grid north from the meridian at (lon, lat), degrees:
  // the direction of the meridian's image from a central difference over
  // +-1e-5 degree of latitude (one-sided at the poles), which is good to
  // about 1e-9 degree.  Engines without a closed form use it.
  double _MeridianConvergence(double lon, double lat) {
    constexpr double kStep = 1e-5;
    const double south = std::max(lat - kStep, -90.0), north = std::min(lat + kStep, 90.0);
    double x1, y1, x2, y2;
    Geo2Proj(lon, south, &x1, &y1);
    Geo2Proj(lon, north, &x2, &y2);
    return std::atan2(x1 - x2, y2 - y1) * KvConst::kRadToDeg;
  }

  CKvProjInterface* m_pProj = nullptr;  // owned

 private:
  void _copy(const CKvVariantEngine& other) {
    m_pProj = nullptr;
    if (const auto* s = dynamic_cast<const Sphere*>(other.m_pProj))
      m_pProj = new Sphere(*s);
    else if (const auto* e = dynamic_cast<const Ellipsoid*>(other.m_pProj))
      m_pProj = new Ellipsoid(*e);
  }
  void _dealloc() {
    delete m_pProj;
    m_pProj = nullptr;
  }
};
