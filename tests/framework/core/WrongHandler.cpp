// Compiled with and without WRONG_SIGNATURE: the first must not compile.
#include "afxwin.h"

class Window : public CWnd {
protected:
#ifdef WRONG_SIGNATURE
    afx_msg void OnSize(int type, int cx, int cy);
#else
    afx_msg void OnSize(UINT type, int cx, int cy);
#endif
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Window, CWnd)
    ON_WM_SIZE()
END_MESSAGE_MAP()
