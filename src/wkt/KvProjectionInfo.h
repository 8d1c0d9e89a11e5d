#pragma once

#include <cstdint>

#include "datum/KvDatumShift.h"
#include "platform/KvCartExport.h"

class CKvPRJParser;

// What a parsed coordinate-system string says besides its projection: the
// linear and angular units with their factors, the datum shift and the two
// axes.  It turns engine coordinates (metres, easting first) into the
// system's own units and axis order and back.
//
// Names longer than their buffers (63 bytes for units, 31 for axes) are
// truncated.
class KVCART_API CKvProjectionInfo {
 public:
  class KVCART_API CAxis {
   public:
    enum EType : int32_t { EAST = 0, NORTH = 1, WEST = 2, SOUTH = 3 };

    // Type EAST, factor 1, empty name.
    CAxis();
    CAxis(EType type, const char* name);
    CAxis(const CAxis& other);
    CAxis& operator=(const CAxis& other);
    virtual ~CAxis();

    // Sets type and name; the factor follows the type (+1 east and north,
    // -1 west and south) and is left alone for a type outside 0..3.
    void SetProperties(EType type, const char* name);
    // "EAST", "NORTH", "WEST", "SOUTH" in any letter case; anything else EAST.
    static EType StringToType(const char* word);

    EType GetType() const { return m_eType; }
    double GetFactor() const { return m_dFactor; }
    const char* GetName() const { return m_szName; }

   private:
    void _copy(const CAxis& other);

    EType m_eType;
    double m_dFactor;
    char m_szName[32];
  };

  CKvProjectionInfo();
  CKvProjectionInfo(const CKvProjectionInfo& other);
  CKvProjectionInfo& operator=(const CKvProjectionInfo& other);
  virtual ~CKvProjectionInfo();

  void SetProjectionInfo(const CKvPRJParser& parser);
  // Copy the factor and name out (`name` needs 64 bytes; either may be
  // null); true when the factor is set.
  bool GetProjUnit(double* factor, char* name) const;
  bool GetAngularUnit(double* factor, char* name) const;
  void GetDatumShift(CKvDatumShift& shift) const;
  void SetDatumShift(const CKvDatumShift& shift);
  void GetAxisTypes(CAxis::EType& first, CAxis::EType& second) const;
  // Engine metres to the system: divide by the linear unit when it is set,
  // apply the axis signs, then exchange the pair when the first axis points
  // north or south.  Returns 1 when it exchanged.
  int Convert(double& x, double& y) const;
  // The exact reverse of Convert.
  int InvConvert(double& x, double& y) const;

 private:
  void _copy(const CKvProjectionInfo& other);

  double m_dProjUnitFactor;
  double m_dAngularUnitFactor;
  char m_szProjUnitName[64];
  char m_szAngularUnitName[64];
  CKvDatumShift m_DatumShift;
  CAxis m_Axis1;
  CAxis m_Axis2;
};
