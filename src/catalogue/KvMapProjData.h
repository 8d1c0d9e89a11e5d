#pragma once

#include <cstdint>
#include <string>

#include "catalogue/KvMapProjDataIDs.h"
#include "platform/KvCartExport.h"

class CKvProjection;
class CKvPRJParser;

// A projection definition record: one named coordinate system of the
// catalogue with its ellipsoid, method and the method's parameters.  This is
// the abstract base of the twenty parameter sets, plus the services they
// share.  The order of the virtual functions below is part of the binary
// interface and must not change.
class KVCART_API CKvMapProjData : public CKvMapProjDataIDs {
 public:
  // The projection methods.  The numbers are stored in files and compared
  // across the library; values 1 to 20 are methods.
  enum EProjectionType : int32_t {
    eTransverseMercator = 1,
    eLambert2SP = 2,
    eLambert1SP = 3,
    eStereographic = 4,
    eNewZealandMapGrid = 5,
    eHotineObliqueMercator = 6,
    eObliqueMercator = 7,
    eRectifiedSkewOrthomorphic = 8,
    eRotatedLongitudeLatitude = 9,
    eMercator2SP = 10,
    eMercator1SP = 11,
    eStereographicNorthPole = 12,
    eStereographicSouthPole = 13,
    eGeographical = 14,
    eKrovak = 15,
    eAlbersEqualArea = 16,
    eLambertAzimuthalEqualArea = 17,
    eCassiniSoldner = 18,
    eEquidistantConic = 19,
    ePolarStereographic = 20,
    eNonProjected = 21,  // no projection method (reserved)
    eUndefined = 22,     // not a coordinate system
  };

  // What a parameter measures, for GetParameter.
  enum EParamType : int32_t {
    eParamNumber = 0,  // dimensionless (a scale)
    eParamLength = 1,  // metres
    eParamAngle = 2,   // decimal degrees
  };

  CKvMapProjData();
  // A copy starts with its own count of renames and in no list.
  CKvMapProjData(const CKvMapProjData& other);
  // Counts as a rename: the assigned record may carry another name.
  CKvMapProjData& operator=(const CKvMapProjData& other);
  virtual ~CKvMapProjData();

  virtual std::string GetName() const = 0;
  virtual void SetName(const std::string& name) = 0;
  virtual std::string GetBranchName() const = 0;
  virtual void SetBranchName(const std::string& name) = 0;
  virtual std::string GetEllipsoidID() const = 0;
  virtual void SetEllipsoidID(const std::string& id) = 0;
  // Reads the record from a parameter-file section; a null handle changes
  // nothing.  `userDefined` makes the record editable and deletable.
  virtual void ReadFromHandle(void* handle, bool userDefined) = 0;
  // Writes the record as a new section of `handle`; read-only records write
  // nothing.
  virtual void WriteToHandle(void* handle) = 0;
  virtual bool IsSectionID(const std::string& section) const = 0;
  virtual bool CanDelete() const = 0;
  virtual bool CanEdit() const = 0;
  // A new engine for this definition, owned by the caller, or null.
  virtual CKvProjection* CreateProjection() = 0;
  // Hands the definition to the WKT writer.
  virtual void TransferParameters(CKvPRJParser& parser) = 0;
  virtual std::string GetProjectionTypeTitle() const = 0;
  virtual EProjectionType GetProjectionType() const = 0;
  virtual int GetNoOfParameters() const = 0;
  // Parameter `index` (0 .. GetNoOfParameters() - 1) with its label and
  // kind; false, outputs untouched, for any other index.
  virtual bool GetParameter(int index, std::string& name, double& value,
                            EParamType& type) const = 0;
  // Stores GetNoOfParameters() values, editable or not.
  virtual void SetParameters(const double* values) = 0;

  // 20.
  static int GetNoOfProjections();
  // index + 1 and type - 1, unchecked.
  static EProjectionType Enum2ProjectionType(int index);
  static int ProjectionType2Enum(EProjectionType type);
  // Whether `type` belongs to the kinds of `mask`: bit 1 projected systems,
  // bit 2 geographic ones (rotated longitude/latitude and geographical).
  // Types 21 and 22 never do.
  static bool IsEquivalent(int mask, EProjectionType type);
  // Reads a degrees-minutes-seconds keyword: integer degrees, then optional
  // integer minutes and floating seconds (missing parts 0).  False, with all
  // three zeroed, when the section has no such keyword.
  static bool tsfGetParamDMS(void* section, const char* keyword, int* degrees, int* minutes,
                             double* seconds);
  // A new editable record of `type` taking its doubles from `parameters` in
  // its constructor's order (a null array gives zeros); null for a type
  // outside 1..20.
  static CKvMapProjData* CreateProjection(EProjectionType type, const std::string& name,
                                          const std::string& branch,
                                          const std::string& ellipsoid, double* parameters);
  // The method's default record ("Default Lambert 1SP", ...); null outside
  // 1..20.
  static CKvMapProjData* CreateDefaultParameterProjection(EProjectionType type);
  // Fills c[0..3] with the series coefficients the engines of `type` share,
  // each a polynomial in `x` (the third flattening for transverse Mercator,
  // e^2 otherwise).  Types and directions without a series leave c alone.
  static void ComputeFourierCoefficients(EProjectionType type, bool forward, double x, double* c);

  // How often this record's name may have changed (a new name set, read
  // from a file or assigned).  A list that files its records by name
  // re-files a record whose count moved.
  std::uint32_t GetRenameCount() const { return m_nRenames; }
  // The renames of records held in a list, over the whole process: a list
  // compares it with the figure it last saw to learn whether any of its
  // records may have been renamed, without looking at each.
  static std::uint64_t GetListedRenameCount();

 protected:
  // Called by a record whose name may have changed.
  void _NoteRenamed();

 private:
  // The list counts the lists a record is held in.
  friend class CKvMapProjectionList;

  std::uint32_t m_nRenames;
  std::uint32_t m_nLists;
};
