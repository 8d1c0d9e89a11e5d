#include "engines/KvNewZealandMapGridConstants.h"

// Built from the named constants, so the two forms cannot disagree.
const double CKvNewZealandMapGridConstants::A[kNumA] = {A1, A2, A3, A4, A5, A6, A7, A8, A9, A10};

const double CKvNewZealandMapGridConstants::B[2 * kNumB] = {B1re, B1im, B2re, B2im, B3re, B3im,
                                                            B4re, B4im, B5re, B5im, B6re, B6im};

const double CKvNewZealandMapGridConstants::C[2 * kNumC] = {C1re, C1im, C2re, C2im, C3re, C3im,
                                                            C4re, C4im, C5re, C5im, C6re, C6im};

const double CKvNewZealandMapGridConstants::D[kNumD] = {D1, D2, D3, D4, D5, D6, D7, D8, D9};
