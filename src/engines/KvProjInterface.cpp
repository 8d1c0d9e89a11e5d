#include "engines/KvProjInterface.h"

CKvProjInterface::~CKvProjInterface() = default;
