#include "datum/KvCartDef.h"

// Defined out of line so that the vtable and type information live in
// libKvCart.so only.
CKvCartDef::~CKvCartDef() = default;
