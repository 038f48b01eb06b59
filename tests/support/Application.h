// Where our own tests find the public library of tests.
#pragma once

#include "testing/Application.h"
