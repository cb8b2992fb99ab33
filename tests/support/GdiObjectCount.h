// Number of GDI objects of this process, for tests of their growth.
#pragma once

#include <map>

/// Counted in the table that the system shows to every process, since the documented function returns 0 under
/// Wine.
int GdiObjectCount();

/// The same by the system's number of the type: 1 device context, 4 region, 5 bitmap, 8 palette, 10 font, 16
/// brush, 48 pen.
std::map<int, int> GdiObjectsByType();
