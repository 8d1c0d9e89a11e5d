#pragma once

// The engine pattern, written once.  Every engine derives from CKvEngine
// (or, for a method whose members depart from the common five, from
// CKvNamedEngine), which supplies what all engines share: the name and the
// ellipsoid members in their fixed order, GetName, Clone,
// GetAnonymousEllipsoid, GetMapProjection, GetEllipsoid and
// TransferParameters.
//
// Adding an engine CKvFoo for the parameter set CKvFooProjection:
//  1. KvFoo.h / KvFoo.cpp, deriving from
//       CKvEngine<CKvFoo, CKvFooProjection>
//     (add EKvEllipsoidRule::eWhenSet when an engine without an ellipsoid must
//     answer GetAnonymousEllipsoid with false; a method whose formulas differ
//     between sphere and ellipsoid derives from CKvVariantEngine, which owns
//     one CKvProjInterface variant and copies it, KvVariantEngine.h).  The header opens with the
//     block the house style asks for: method, source of the formulas,
//     accuracy as measured (and the tools/ script that measured it),
//     domain, deliberate departures.
//  2. Write only what is the method's own: the constructor from the set,
//     CKvFoo(CKvFooProjection* set), which names the set's getters; the
//     constructor from explicit values, CKvFoo(name, values..., const
//     CKvEllipsoid&); the derived constants; Geo2Proj and Proj2Geo; and the
//     optional slots the method overrides (GetOrigin, GetConvergence,
//     GetDefaultArea, ...).  Both constructors usually delegate to one
//     private constructor that takes `const CKvEllipsoid*`: null when the
//     set's ellipsoid is unknown (see below).  Step 10 of
//     TransferParameters, the method's own parameters, is the set's table
//     of parameter rows; an engine that must hand over something else
//     hides TransferMethodParameters.
//  3. Give its type its row in KvEngineTable.cpp: the engine the set
//     creates and how a parsed WKT record's values become the explicit
//     constructor's arguments.  That table is the one place where a type
//     meets its engine.
//  4. Shared latitude functions and series are in KvAuxiliaryLatitudes.h.
//  5. Test cases go into a data file of tests/data/engines (the format is
//     described in tests/engines/EngineCasesTest.cpp), not into a test
//     loop; the layout test (EngineLayoutTest.cpp) pins the engine's size.
//  6. The accuracy the header states is measured: add the method's
//     independent reference to tools/engine_references.py and run
//     tools/measure_engine_accuracy.sh.
//
// Without an ellipsoid.  An engine built from a set whose ellipsoid
// identifier is empty or not in the catalogue has only its name: every
// numeric member stays 0, and what Geo2Proj and Proj2Geo return then is
// the method's degenerate case (often NaN), which its header states.  The
// owner (CKvMapProjection) validates definitions before using them.

#include <string>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvEngineCatalogue.h"
#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"
#include "wkt/KvPRJParser.h"

// The name and everything that goes through it.
template <class Engine, class Set>
class KVCART_API CKvNamedEngine : public CKvProjection {
 public:
  typedef Set ParameterSet;

  const char* GetName() override { return m_szName; }
  // A memberwise copy; an engine that owns other objects copies them in
  // its copy constructor.
  CKvProjection* Clone() override { return new Engine(static_cast<const Engine&>(*this)); }

  // Hands the definition of this engine's name to the WKT writer: the
  // catalogue's set (default values when the name is not in it) and the
  // catalogue's ellipsoid of the name; without one the method is written as
  // "Non_Projected".  The unit is the metre unless the record names its own
  // linear unit; the record's datum shift goes with it.
  void TransferParameters(CKvPRJParser& parser) override {
    Engine& engine = static_cast<Engine&>(*this);
    Set set;
    engine.GetMapProjection(set);
    CKvEllipsoid ellipsoid;
    const bool found = GetEllipsoid(ellipsoid);
    set.TransferHead(parser, found ? &ellipsoid : nullptr);
    engine.TransferMethodParameters(set, parser);
    set.TransferTail(parser, "Meter");
  }

  // Fills `set` with the catalogue's definition of this engine's name (the
  // catalogue's values, not the engine's); false when the name is not in
  // the catalogue or belongs to another method.
  bool GetMapProjection(Set& set) { return CKvEngineCatalogue::GetMapProjection(m_szName, set); }
  // The catalogue's ellipsoid of this engine's name.
  bool GetEllipsoid(CKvEllipsoid& ellipsoid) {
    return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
  }
  // The method's parameters for the WKT writer: the set's parameter rows.
  void TransferMethodParameters(const Set& set, CKvPRJParser& parser) const {
    set.TransferValues(parser);
  }

 protected:
  explicit CKvNamedEngine(const std::string& name) { CKvEngineCatalogue::CopyName(m_szName, name); }
  // The catalogue's ellipsoid of the set's identifier, or null.
  static const CKvEllipsoid* _FindEllipsoid(const Set& set) {
    return CKvEngineCatalogue::FindEllipsoid(set.GetEllipsoidID());
  }

  char m_szName[CKvEngineCatalogue::kNameSize] = {};
};

// When GetAnonymousEllipsoid answers.
enum class EKvEllipsoidRule {
  eAlways,   // always, with whatever the members hold
  eWhenSet,  // only when the engine has an ellipsoid (a > 0)
};

// The name and the four ellipsoid members every engine begins with.
template <class Engine, class Set, EKvEllipsoidRule Rule = EKvEllipsoidRule::eAlways>
class KVCART_API CKvEngine : public CKvNamedEngine<Engine, Set> {
 public:
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override {
    if (Rule == EKvEllipsoidRule::eWhenSet && !(m_dA > 0.0)) return false;
    ellipsoid.SetParams(m_dA, m_dInvF);
    return true;
  }

 protected:
  using CKvNamedEngine<Engine, Set>::CKvNamedEngine;
  // a, 1/f and e from the ellipsoid; e^2 as e e.
  void _SetEllipsoid(const CKvEllipsoid& ellipsoid) {
    m_dA = ellipsoid.GetMajor();
    m_dInvF = ellipsoid.GetInvFlatness();
    m_dE = ellipsoid.GetEccentricity();
    m_dE2 = m_dE * m_dE;
  }

  double m_dA = 0.0;     // semi-major axis, metres
  double m_dInvF = 0.0;  // inverse flattening (0 or less: a sphere)
  double m_dE = 0.0;     // eccentricity
  double m_dE2 = 0.0;    // its square
};
