// Work that takes time, beside the user's own work: #include "corvane/Jobs.h"
#pragma once

#include "corvane/author/Jobs.h"
