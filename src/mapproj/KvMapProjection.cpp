#include "mapproj/KvMapProjection.h"

#include "cart/KvCartSetup.h"
#include "platform/String.h"

namespace {

bool TrimmedEquals(const char* s, const char* name) {
  CString text(s);
  text.TrimLeft();
  text.TrimRight();
  return text.Compare(name) == 0;
}

}  // namespace

const char* CKvMapProjection::IDtoProjectionString(EMapProjectionString id) {
  switch (id) {
    case eNonUtm:
      return "NON-UTM";
    case eLongLat:
      return "LONG/LAT";
    case eGoogleMercator:
      return "PROJCS[\"Google Maps - Mercator\",GEOGCS[\"GCS_Google_Maps\","
             "DATUM[\"D_Google_Maps\",SPHEROID[\"Google Maps (Sphere)\",6378137,0]],"
             "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
             "PROJECTION[\"Mercator\"],PARAMETER[\"False_Easting\",0],"
             "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",0],"
             "PARAMETER[\"Standard_Parallel_1\",0],UNIT[\"Meter\",1]]";
    case eWgs84Geographic:
      return "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,"
             "298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.017453292519943295]]";
  }
  return "";
}

bool CKvMapProjection::IsLocal(const char* s) { return TrimmedEquals(s, "NON-UTM"); }

CKvEllipsoid* CKvMapProjection::Ellipsoid(const char* name) {
  CKvCartSetup& setup = CKvCartSetup::Instance();
  CKvMapProjData* record = setup.m_MapProjectionList.GetMapProjection(name);
  if (!record) return nullptr;
  const std::string id = record->GetEllipsoidID();
  if (id.empty()) return nullptr;
  return setup.m_EllipsoidList.GetEllipsoid(id);
}

CKvMapProjData* CKvMapProjection::MapProjection(const char* name) {
  CKvCartSetup& setup = CKvCartSetup::Instance();
  setup.SetMapProjectionListModified();
  return setup.m_MapProjectionList.GetMapProjection(name);
}
