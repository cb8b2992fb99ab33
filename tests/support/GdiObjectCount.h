// Number of GDI objects of this process, for tests of their growth.
#pragma once

/// Counted in the table that the system shows to every process, since the documented function returns 0 under
/// Wine.
int GdiObjectCount();
