// Stands before the written header of this name: the hash of other public declarations.
#pragma once

#define CORVANE_INTERFACE_HASH "0123456789ab"
