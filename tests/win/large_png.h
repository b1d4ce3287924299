#pragma once
// A PNG of the largest size the agent accepts, for the tests and the window
// timing benchmark.
#include <string>

#include "base/win_headers.h"

// side x side pixels, 32 bits with a transparent top-left corner and enough
// detail that the compressor cannot make it trivial, written with the
// codec's own encoder. COM must be set up on the calling thread.
bool writeLargePng(const std::string& path, UINT side);
