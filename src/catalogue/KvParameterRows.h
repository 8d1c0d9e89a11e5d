#pragma once

// The parameter rows that several parameter sets share, each written once:
// label, kind, keys and the WKT record's field.  Being constexpr, they can
// fill the sets' static tables before any code runs.

#include "catalogue/KvMapProjDataIDs.h"
#include "catalogue/KvParameterTable.h"
#include "wkt/KvPRJParser.h"

namespace KvRow {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

inline constexpr SKvParameterRow kScale = {"Scale:",
                                           D::eParamNumber,
                                           &K::ID_SCALE,
                                           &K::ID_SCALE_REDUCTION,
                                           EKvAltKey::eScaleReduction,
                                           KV_PRJ_FIELD(ScaleFactor)};
inline constexpr SKvParameterRow kCentre = {"Central meridian:", D::eParamAngle,
                                            &K::ID_CENTRE,       &K::ID_CENTRE_DMS,
                                            EKvAltKey::eDms,     KV_PRJ_FIELD(CentralMeridian)};
inline constexpr SKvParameterRow kCentralMeridian = {
    "Central Meridian:",         D::eParamAngle,  &K::ID_CENTRAL_MERIDIAN,
    &K::ID_CENTRAL_MERIDIAN_DMS, EKvAltKey::eDms, KV_PRJ_FIELD(CentralMeridian)};
inline constexpr SKvParameterRow kOriginLongitude = {
    "Longitude origin:",         D::eParamAngle,  &K::ID_ORIGIN_LONGITUDE,
    &K::ID_ORIGIN_LONGITUDE_DMS, EKvAltKey::eDms, KV_PRJ_FIELD(CentralMeridian)};
inline constexpr SKvParameterRow kOriginLatitude = {
    "Latitude origin:",         D::eParamAngle,  &K::ID_ORIGIN_LATITUDE,
    &K::ID_ORIGIN_LATITUDE_DMS, EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfOrigin)};
inline constexpr SKvParameterRow kParallel1 = {"First parallel:", D::eParamAngle,
                                               &K::ID_PARALLEL_1, &K::ID_PARALLEL_1_DMS,
                                               EKvAltKey::eDms,   KV_PRJ_FIELD(StandardParallel1)};
inline constexpr SKvParameterRow kParallel2 = {"Second parallel:", D::eParamAngle,
                                               &K::ID_PARALLEL_2,  &K::ID_PARALLEL_2_DMS,
                                               EKvAltKey::eDms,    KV_PRJ_FIELD(StandardParallel2)};
inline constexpr SKvParameterRow kCenterLongitude = {
    "Longitude of center:",      D::eParamAngle,  &K::ID_CENTER_LONGITUDE,
    &K::ID_CENTER_LONGITUDE_DMS, EKvAltKey::eDms, KV_PRJ_FIELD(LongitudeOfCenter)};
inline constexpr SKvParameterRow kCenterLatitude = {
    "Latitude of center:",      D::eParamAngle,  &K::ID_CENTER_LATITUDE,
    &K::ID_CENTER_LATITUDE_DMS, EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfCenter)};
inline constexpr SKvParameterRow kAzimuth = {"Azimuth:", D::eParamAngle,   &K::ID_AZIMUTH,
                                             nullptr,    EKvAltKey::eNone, KV_PRJ_FIELD(Azimuth)};
inline constexpr SKvParameterRow kXYPlaneRotation = {
    "XY plane rotation:",     D::eParamAngle,
    &K::ID_XY_PLANE_ROTATION, nullptr,
    EKvAltKey::eNone,         KV_PRJ_FIELD(XYPlaneRotation)};
inline constexpr SKvParameterRow kFalseEasting = {
    "False easting:",     D::eParamLength,
    &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
    EKvAltKey::eFootUs,   KV_PRJ_FIELD(FalseEasting)};
inline constexpr SKvParameterRow kFalseNorthing = {
    "False northing:",     D::eParamLength,
    &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
    EKvAltKey::eFootUs,    KV_PRJ_FIELD(FalseNorthing)};

}  // namespace KvRow
