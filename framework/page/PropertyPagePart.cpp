#include "PropertyPagePart.h"

#include "common/DialogKeys.h"
#include "ole/OleTaskString.h"
#include "PropertyPage.h"

namespace framework {

namespace {

/// Size in pixels of a dialog template; the system lays it out, since the unit depends on its font.
SIZE TemplateSize(UINT id) {
    SIZE size{};
    const HWND dialog = ::CreateDialogParam(
        AfxGetResourceHandle(), MAKEINTRESOURCE(id), ::GetDesktopWindow(),
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    if (dialog) {
        RECT area{};
        ::GetWindowRect(dialog, &area);
        size = {area.right - area.left, area.bottom - area.top};
        ::DestroyWindow(dialog);
    }
    return size;
}

} // namespace

PropertyPagePart::PropertyPagePart(COlePropertyPage& page) noexcept : OlePart(page), m_page(page) {}

STDMETHODIMP PropertyPagePart::SetPageSite(IPropertyPageSite* site) {
    return Guard([&]() -> HRESULT {
        if (site && m_page.m_site) {
            return E_UNEXPECTED; // the page is in a frame already
        }
        m_page.m_site = common::ComPtr<IPropertyPageSite>(site);
        m_page.OnSetPageSite();
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::Activate(HWND parent, LPCRECT rect, BOOL) {
    return Guard([&]() -> HRESULT {
        if (!rect) {
            return E_POINTER;
        }
        if (m_page.m_hWnd) {
            return E_UNEXPECTED;
        }
        if (!m_page.Create(m_page.m_idDlg, CWnd::FromHandle(parent))) {
            return E_FAIL;
        }
        m_page.MoveWindow(rect);
        m_page.m_modified = false; // filling the controls changed nothing
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::Deactivate() {
    return Guard([&]() -> HRESULT {
        if (!m_page.m_hWnd) {
            return E_UNEXPECTED;
        }
        m_page.DestroyWindow();
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::GetPageInfo(PROPPAGEINFO* info) {
    if (!info) {
        return E_POINTER;
    }
    const ULONG size = info->cb;
    *info = {};
    info->cb = size;
    return Guard([&]() -> HRESULT {
        CString title;
        title.LoadString(m_page.m_idCaption);
        info->pszTitle = OleTaskString(title);
        if (!info->pszTitle) {
            return E_OUTOFMEMORY;
        }
        info->size = TemplateSize(m_page.m_idDlg);
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::SetObjects(ULONG count, IUnknown** objects) {
    return Guard([&]() -> HRESULT {
        if (count > 0 && !objects) {
            return E_POINTER;
        }
        std::vector<common::ComPtr<IDispatch>> kept;
        for (ULONG i = 0; i < count; ++i) {
            common::ComPtr<IDispatch> object = common::Query<IDispatch>(objects[i], IID_IDispatch);
            if (!object) {
                return E_NOINTERFACE;
            }
            kept.push_back(std::move(object));
        }
        m_page.m_objects.swap(kept);
        m_page.OnObjectsChanged();
        if (m_page.m_hWnd && count > 0) {
            m_page.UpdateData(FALSE);
        }
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::Show(UINT command) {
    return Guard([&]() -> HRESULT {
        if (!m_page.m_hWnd) {
            return E_UNEXPECTED;
        }
        m_page.ShowWindow(static_cast<int>(command));
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::Move(LPCRECT rect) {
    return Guard([&]() -> HRESULT {
        if (!rect) {
            return E_POINTER;
        }
        if (!m_page.m_hWnd) {
            return E_UNEXPECTED;
        }
        m_page.MoveWindow(rect);
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::IsPageDirty() {
    return Guard([&] { return m_page.IsModified() ? S_OK : S_FALSE; });
}

STDMETHODIMP PropertyPagePart::Apply() {
    return Guard([&]() -> HRESULT {
        if (!m_page.m_hWnd) {
            return E_UNEXPECTED;
        }
        if (!m_page.UpdateData(TRUE)) {
            return E_FAIL;
        }
        m_page.m_modified = false;
        return S_OK;
    });
}

STDMETHODIMP PropertyPagePart::Help(LPCOLESTR) {
    return E_NOTIMPL; // the frame looks for help itself
}

STDMETHODIMP PropertyPagePart::TranslateAccelerator(MSG* message) {
    return Guard([&]() -> HRESULT {
        if (!message) {
            return E_POINTER;
        }
        if (m_page.m_hWnd && common::TranslateDialogKey(m_page.m_hWnd, *message)) {
            return S_OK;
        }
        const common::ComPtr<IPropertyPageSite> site = m_page.m_site.Copy();
        return site && site->TranslateAccelerator(message) == S_OK ? S_OK : S_FALSE;
    });
}

STDMETHODIMP PropertyPagePart::EditProperty(DISPID id) {
    return Guard([&]() -> HRESULT { return m_page.OnEditProperty(id) ? S_OK : E_NOTIMPL; });
}

} // namespace framework
