#include "datum/KvArrayType.h"

// Out of line so that the vtable and type information live in libKvCart.so.
CKvArrayType::~CKvArrayType() = default;
