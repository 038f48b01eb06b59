// Bands as an indented text: captions without mnemonics, shortcuts, and what is unusual about an entry.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

#include <string>

namespace corvane {

// A caption without the mark of its mnemonic; "&&" means "&".
[[nodiscard, gnu::visibility("default")]] std::string WithoutMnemonic(std::string_view sCaption);

// An entry a line, two blanks a level, menus that open from an entry below it.
[[nodiscard, gnu::visibility("default")]] std::string BandAsText(const Band& oBand, int nDepth = 0);

} // namespace corvane
