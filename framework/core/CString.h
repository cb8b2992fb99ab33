// CString: a wide text.
//
// Covered: the documented members below. Unicode only; there is no conversion from or to narrow text. Texts
// are copied by value, not shared. Not covered: the members for case, tokens, trimming, insertion, deletion
// and message formatting.
#pragma once

#include "Types.h"

#include <oleauto.h>

#include <string>

class CString {
public:
    CString() = default;
    CString(LPCTSTR lpsz) : m_text(lpsz ? lpsz : L"") {}
    CString(LPCTSTR lpch, int nLength) : m_text(lpch, static_cast<size_t>(nLength)) {}
    explicit CString(TCHAR ch, int nLength = 1) : m_text(static_cast<size_t>(nLength), ch) {}

    CString& operator=(LPCTSTR lpsz);
    CString& operator+=(const CString& string);
    CString& operator+=(LPCTSTR lpsz);
    CString& operator+=(TCHAR ch);

    operator LPCTSTR() const noexcept { return m_text.c_str(); }
    LPCTSTR GetString() const noexcept { return m_text.c_str(); }
    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }
    TCHAR GetAt(int iChar) const { return m_text.at(static_cast<size_t>(iChar)); }

    /// Parts of the text; counts and places beyond it are cut to it.
    CString Left(int nCount) const;
    CString Mid(int iFirst) const;
    CString Mid(int iFirst, int nCount) const;

    /// Place of the first (last) occurrence, or -1.
    int Find(LPCTSTR lpszSub, int iStart = 0) const noexcept;
    int Find(TCHAR ch, int iStart = 0) const noexcept;
    int ReverseFind(TCHAR ch) const noexcept;

    /// Negative, zero or positive, by code unit.
    int Compare(LPCTSTR lpsz) const noexcept { return m_text.compare(lpsz); }

    /// A buffer of at least nMinBufferLength characters that may be written until ReleaseBuffer.
    LPTSTR GetBuffer(int nMinBufferLength);
    /// Ends writing; -1 takes the length up to the first null.
    void ReleaseBuffer(int nNewLength = -1);

    /// printf style; %s is wide. The arguments are plain values: a CString is passed as (LPCTSTR)text.
    void __cdecl Format(LPCTSTR lpszFormat, ...);

    /// A string resource; FALSE, and the text empty, when there is none. Without an instance: the resource
    /// module.
    BOOL LoadString(HINSTANCE hInstance, UINT nID);
    BOOL LoadString(UINT nID);

    /// A copy for automation, to be freed by the caller; throws when memory is out.
    BSTR AllocSysString() const;

private:
    std::wstring m_text;
};

CString operator+(const CString& left, const CString& right);
CString operator+(const CString& left, LPCTSTR right);
CString operator+(LPCTSTR left, const CString& right);

inline bool operator==(const CString& left, const CString& right) noexcept {
    return left.Compare(right) == 0;
}
inline bool operator==(const CString& left, LPCTSTR right) noexcept {
    return left.Compare(right) == 0;
}
inline bool operator<(const CString& left, const CString& right) noexcept {
    return left.Compare(right) < 0;
}
