// A form on paper.
#pragma once

namespace corvane::desktop {

class FormWidget;
class IPrintout;

// What a user reads on the form, from top to bottom: titles, fields with their values, tables whole, and the widgets of
// its places. Buttons, and what is hidden or empty, are left out.
void PrintForm(const FormWidget& form, IPrintout& printout);

} // namespace corvane::desktop
