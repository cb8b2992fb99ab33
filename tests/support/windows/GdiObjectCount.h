// Number of GDI objects of this process, for tests of their growth.
#pragma once

#include <array>

/// Counted in the table that the system shows to every process, since the documented function returns 0 under
/// Wine.
int GdiObjectCount();

/// The same at the system's number of the type: 1 device context, 4 region, 5 bitmap, 8 palette, 10 font, 16
/// brush, 48 pen.
std::array<int, 256> GdiObjectsByType();
