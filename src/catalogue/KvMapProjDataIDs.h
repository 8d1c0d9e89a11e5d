#pragma once

#include <string>

#include "platform/KvCartExport.h"

// The keywords of a projection catalogue section, shared by every parameter
// set.  "Centre", "Central_Meridian" and "Center_Longitude" are three
// different keys used by different methods; they must not be merged.
class KVCART_API CKvMapProjDataIDs {
 public:
  static const std::string ID_PROJECTION_NAME;
  static const std::string ID_BRANCH_NAME;
  static const std::string ID_ELLIPSOID_ID;
  static const std::string ID_PARALLEL_1_DMS;
  static const std::string ID_PARALLEL_1;
  static const std::string ID_PARALLEL_2_DMS;
  static const std::string ID_PARALLEL_2;
  static const std::string ID_PSEUDO_PARALLEL_DMS;
  static const std::string ID_PSEUDO_PARALLEL;
  static const std::string ID_CENTRAL_MERIDIAN_DMS;
  static const std::string ID_CENTRAL_MERIDIAN;
  static const std::string ID_CENTRE_DMS;
  static const std::string ID_CENTRE;
  static const std::string ID_CENTER_LONGITUDE_DMS;
  static const std::string ID_CENTER_LONGITUDE;
  static const std::string ID_CENTER_LATITUDE_DMS;
  static const std::string ID_CENTER_LATITUDE;
  static const std::string ID_ORIGIN_LONGITUDE_DMS;
  static const std::string ID_ORIGIN_LONGITUDE;
  static const std::string ID_ORIGIN_LATITUDE_DMS;
  static const std::string ID_ORIGIN_LATITUDE;
  static const std::string ID_SCALE;
  static const std::string ID_SCALE_REDUCTION;
  static const std::string ID_SCALE_AT_PSEUDO_PARALLEL;
  static const std::string ID_AZIMUTH;
  static const std::string ID_XY_PLANE_ROTATION;
  static const std::string ID_X_SCALE;
  static const std::string ID_Y_SCALE;
  static const std::string ID_LONGITUDE_OF_SOUTH_POLE;
  static const std::string ID_LATITUDE_OF_SOUTH_POLE;
  static const std::string ID_ANGLE_OF_ROTATION;
  static const std::string ID_FALSE_EASTING;
  static const std::string ID_FALSE_EASTING_FOOT_US;
  static const std::string ID_FALSE_NORTHING;
  static const std::string ID_FALSE_NORTHING_FOOT_US;
  // What the registry knows besides the parameters (CKvMapProjDetails).
  static const std::string ID_EPSG_CODE;
  static const std::string ID_LINEAR_UNIT;
  static const std::string ID_LINEAR_UNIT_FACTOR;
  static const std::string ID_TOWGS84;
};
