#pragma once

#include <string>

#include "platform/KvCartExport.h"

// A reference ellipsoid: a descriptive name, a short identifier code (such as
// "WE"), the semi-major axis a in metres and the inverse flattening 1/f.  An
// inverse flattening of 0 or less marks a sphere of radius a.
class KVCART_API CKvEllipsoid {
 public:
  // Empty name and identifier, a = 1 and 1/f = 1.
  CKvEllipsoid();
  CKvEllipsoid(const std::string& name, const std::string& id, double major, double invFlattening);
  CKvEllipsoid(const CKvEllipsoid& other);
  CKvEllipsoid& operator=(const CKvEllipsoid& other);
  virtual ~CKvEllipsoid();

  std::string GetName() const;
  std::string GetID() const;
  double GetMajor() const;
  double GetInvFlatness() const;  // as stored, also for a sphere
  // Sets a and 1/f; the name and identifier stay.
  void SetParams(double major, double invFlattening);

  // b = a (1/f - 1) / (1/f); a for a sphere.
  double GetMinor() const;
  // f = 1 / (1/f); 0 for a sphere.
  double GetFlatness() const;
  // e = sqrt((a^2 - b^2) / a^2); 0 for a sphere.
  double GetEccentricity() const;

  // Same names, same identifiers (exact bytes) and close numbers.  Numbers
  // are close when equal or within 1e-12 of the larger magnitude.
  bool operator==(const CKvEllipsoid& other) const;
  // Close numbers only: differently named ellipsoids can be equivalent.
  bool IsEquivalent(const CKvEllipsoid& other) const;

 private:
  void _copy(const CKvEllipsoid& other);

  std::string m_strName;
  std::string m_strID;
  double m_dMajor;
  double m_dInvFlattening;
};
