#pragma once

#include <array>
#include <string>

#include "catalogue/KvMapProjData.h"
#include "catalogue/KvMapProjDetails.h"
#include "catalogue/KvParameterTable.h"
#include "engines/KvEngineTable.h"
#include "platform/KvCartExport.h"

// What every parameter set has beyond CKvMapProjData: the registry's details
// of the record (its EPSG code, linear unit and datum shift).  Records that
// host programs derive from CKvMapProjData directly have none.  The two
// functions come after CKvMapProjData's, whose order they leave as it is.
class KVCART_API CKvParameterSetBase : public CKvMapProjData {
 public:
  virtual const CKvMapProjDetails& GetDetails() const = 0;
  // Replaces the details; like SetParameters it works on read-only records
  // too (the library gives its built-in records their codes with it).
  virtual void SetDetails(const CKvMapProjDetails& details) = 0;

  // The details of `record`; null for null or a record of another kind.
  static const CKvMapProjDetails* DetailsOf(const CKvMapProjData* record) {
    const CKvParameterSetBase* set = dynamic_cast<const CKvParameterSetBase*>(record);
    return set ? &set->GetDetails() : nullptr;
  }
};

// The shape every parameter set shares: name, branch name, ellipsoid
// identifier, the method's N doubles and the two flags, in that order, then
// the registry's details, with the virtual interface implemented once.
// `Set` is the concrete class, which supplies its table through a static
// Info(); its engine comes from the table of engines (KvEngineTable).
//
// A set built by the library or read from a system file is read-only: its
// name, ellipsoid and parameter setters do nothing and it is never written
// back.  SetBranchName, SetParameters and SetDetails work regardless, on
// purpose.
template <class Set, int N>
class KVCART_API CKvParameterSet : public CKvParameterSetBase {
 public:
  // Empty strings, zeros, editable and deletable.
  CKvParameterSet() : m_adParams{}, m_bCanDelete(true), m_bCanEdit(true) {}
  // `values` holds N doubles in field order; null gives zeros.
  CKvParameterSet(const std::string& name, const std::string& branch, const std::string& ellipsoid,
                  const double* values, bool canDelete, bool canEdit)
      : m_strName(name),
        m_strBranchName(branch),
        m_strEllipsoidID(ellipsoid),
        m_adParams{},
        m_bCanDelete(canDelete),
        m_bCanEdit(canEdit) {
    if (values)
      for (int i = 0; i < N; ++i) m_adParams[i] = values[i];
  }

  std::string GetName() const override { return m_strName; }
  void SetName(const std::string& name) override {
    if (!m_bCanEdit || name == m_strName) return;
    m_strName = name;
    _NoteRenamed();
  }
  std::string GetBranchName() const override { return m_strBranchName; }
  void SetBranchName(const std::string& name) override { m_strBranchName = name; }
  std::string GetEllipsoidID() const override { return m_strEllipsoidID; }
  void SetEllipsoidID(const std::string& id) override {
    if (m_bCanEdit) m_strEllipsoidID = id;
  }
  void ReadFromHandle(void* handle, bool userDefined) override {
    if (!handle) return;
    const std::string before = m_strName;
    CKvParameterTable::Read(handle, Set::Info(), m_strName, m_strBranchName, m_strEllipsoidID,
                            m_adParams.data(), m_Details);
    if (m_strName != before) _NoteRenamed();
    m_bCanDelete = userDefined;
    m_bCanEdit = userDefined;
  }
  void WriteToHandle(void* handle) override {
    if (!m_bCanEdit) return;
    CKvParameterTable::Write(handle, Set::Info(), m_strName, m_strBranchName, m_strEllipsoidID,
                             m_adParams.data(), m_Details);
  }
  bool IsSectionID(const std::string& section) const override {
    const SKvParameterSetInfo& info = Set::Info();
    return section == *info.section || (info.oldSection && section == *info.oldSection);
  }
  bool CanDelete() const override { return m_bCanDelete; }
  bool CanEdit() const override { return m_bCanEdit; }
  void TransferParameters(CKvPRJParser& parser) override {
    CKvParameterTable::Transfer(parser, Set::Info(), m_strName, m_strBranchName,
                                CKvParameterTable::FindEllipsoid(m_strEllipsoidID),
                                m_adParams.data(), Set::Info().angularUnit ? "Degree" : "Meter",
                                m_Details);
  }
  // The engine of the set's method, from the one table of engines.
  CKvProjection* CreateProjection() override { return CKvEngineTable::Create(*this); }
  std::string GetProjectionTypeTitle() const override { return Set::Info().title; }
  EProjectionType GetProjectionType() const override { return Set::Info().type; }
  int GetNoOfParameters() const override { return N; }
  bool GetParameter(int index, std::string& name, double& value, EParamType& type) const override {
    return CKvParameterTable::GetParameter(Set::Info(), m_adParams.data(), index, name, value,
                                           type);
  }
  void SetParameters(const double* values) override {
    if (!values) return;
    for (int i = 0; i < N; ++i) m_adParams[i] = values[i];
  }
  const CKvMapProjDetails& GetDetails() const override { return m_Details; }
  void SetDetails(const CKvMapProjDetails& details) override { m_Details = details; }

 public:
  // The three parts of TransferParameters that engines use around their own
  // (see CKvEngine): the names and the method with an ellipsoid the caller
  // found (null for none); the method's values; the unit (the details' or
  // `unitName`) and the details' datum shift.
  void TransferHead(CKvPRJParser& parser, const CKvEllipsoid* ellipsoid) const {
    CKvParameterTable::TransferHead(parser, Set::Info(), m_strName, m_strBranchName, ellipsoid);
  }
  void TransferValues(CKvPRJParser& parser) const {
    CKvParameterTable::TransferValues(parser, Set::Info(), m_adParams.data(), m_Details);
  }
  void TransferTail(CKvPRJParser& parser, const char* unitName) const {
    CKvParameterTable::TransferTail(parser, Set::Info(), unitName, m_Details);
  }
  // Copies every numeric parameter of `other`, as the typed setters would:
  // only when this set is editable.
  void AssignParameters(const Set& other) {
    if (m_bCanEdit) m_adParams = other.m_adParams;
  }
  // Copies the details of `other` into this set, which belongs to no
  // catalogue (the engines' copy of their record), editable or not.
  void CopyDetailsUnlisted(const Set& other) { m_Details.CopyUnlisted(other.m_Details); }

 protected:
  double _Get(int field) const { return m_adParams[field]; }
  void _Set(int field, double value) {
    if (m_bCanEdit) m_adParams[field] = value;
  }

  std::string m_strName;
  std::string m_strBranchName;
  std::string m_strEllipsoidID;
  std::array<double, N> m_adParams;
  bool m_bCanDelete;
  bool m_bCanEdit;
  CKvMapProjDetails m_Details;
};
