#pragma once

namespace corvane::desktop {

// To be called before long work. Making the first widgets leaves the upper halves of the vector registers in use; many
// processors then run all code that works on the lower halves alone, which is nearly all there is, a tenth slower until
// someone clears them. Does nothing where there are no such registers.
void ClearWideRegisters();

} // namespace corvane::desktop
