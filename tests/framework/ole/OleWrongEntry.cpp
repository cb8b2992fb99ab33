// Compiles with RIGHT_TYPES and must not with WRONG_TYPES: a dispatch map entry whose types are not its
// member's.
#include "ole/OleDispatch.h"

class Target : public CCmdTarget {
public:
    void Resize(LONG width, LONG height);
    DECLARE_DISPATCH_MAP()
};

#ifdef RIGHT_TYPES
#define TYPES VTS_I4 VTS_I4
#else
#define TYPES VTS_I4 VTS_BSTR
#endif

BEGIN_DISPATCH_MAP(Target, CCmdTarget)
    DISP_FUNCTION_ID(Target, "Resize", 1, Resize, VT_EMPTY, TYPES)
END_DISPATCH_MAP()
