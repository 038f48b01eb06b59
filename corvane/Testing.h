// All that the tests of an application need: #include "corvane/Testing.h", and the library Corvane::Testing.
#pragma once

#include "testing/Application.h"
