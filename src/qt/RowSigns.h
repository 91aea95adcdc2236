// The signs before rows of lists.
#pragma once

#include <QIcon>

#include "controls/Controls.h"

namespace tarvolinex {

// As large as the letters beside it, in their colour, also in a selected row; of the present palette and font.
QIcon RowSign(RowMark mark);

}  // namespace tarvolinex
