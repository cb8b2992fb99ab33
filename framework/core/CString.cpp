#include "CString.h"

#include "ModuleState.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <new>

CString& CString::operator=(LPCTSTR lpsz) {
    // Through a copy: the argument may point into this text.
    m_text = std::wstring(lpsz ? lpsz : L"");
    return *this;
}

CString& CString::operator+=(const CString& string) {
    m_text += string.m_text;
    return *this;
}

CString& CString::operator+=(LPCTSTR lpsz) {
    if (lpsz) {
        m_text += std::wstring(lpsz);
    }
    return *this;
}

CString& CString::operator+=(TCHAR ch) {
    m_text += ch;
    return *this;
}

CString CString::Left(int nCount) const {
    return Mid(0, nCount);
}

CString CString::Mid(int iFirst) const {
    return Mid(iFirst, GetLength());
}

CString CString::Mid(int iFirst, int nCount) const {
    const int first = std::clamp(iFirst, 0, GetLength());
    const int count = std::clamp(nCount, 0, GetLength() - first);
    return {m_text.c_str() + first, count};
}

int CString::Find(LPCTSTR lpszSub, int iStart) const noexcept {
    return iStart < 0 ? -1 : static_cast<int>(m_text.find(lpszSub, static_cast<size_t>(iStart)));
}

int CString::Find(TCHAR ch, int iStart) const noexcept {
    return iStart < 0 ? -1 : static_cast<int>(m_text.find(ch, static_cast<size_t>(iStart)));
}

int CString::ReverseFind(TCHAR ch) const noexcept {
    return static_cast<int>(m_text.rfind(ch));
}

LPTSTR CString::GetBuffer(int nMinBufferLength) {
    m_text.resize(static_cast<size_t>(std::max(nMinBufferLength, GetLength())));
    return m_text.data();
}

void CString::ReleaseBuffer(int nNewLength) {
    m_text.resize(nNewLength < 0 ? std::wcslen(m_text.c_str()) : static_cast<size_t>(nNewLength));
}

void __cdecl CString::Format(LPCTSTR lpszFormat, ...) {
    va_list arguments;
    va_start(arguments, lpszFormat);
    va_list again;
    va_copy(again, arguments);
    // The C++ library's vswprintf takes %s as narrow text.
    std::wstring text(static_cast<size_t>(std::max(::_vscwprintf(lpszFormat, arguments), 0)), L'\0');
    ::_vsnwprintf(text.data(), text.size(), lpszFormat, again);
    va_end(again);
    va_end(arguments);
    m_text = std::move(text);
}

BOOL CString::LoadString(HINSTANCE hInstance, UINT nID) {
    LPCTSTR text = nullptr;
    const int length = ::LoadString(hInstance, nID, reinterpret_cast<LPTSTR>(&text), 0);
    m_text.assign(text ? text : L"", static_cast<size_t>(std::max(length, 0)));
    return length > 0;
}

BOOL CString::LoadString(UINT nID) {
    return LoadString(AfxGetResourceHandle(), nID);
}

BSTR CString::AllocSysString() const {
    const BSTR copy = ::SysAllocStringLen(m_text.data(), static_cast<UINT>(m_text.size()));
    if (!copy) {
        throw std::bad_alloc();
    }
    return copy;
}

CString operator+(const CString& left, const CString& right) {
    CString sum(left);
    return sum += right;
}

CString operator+(const CString& left, LPCTSTR right) {
    CString sum(left);
    return sum += right;
}

CString operator+(LPCTSTR left, const CString& right) {
    CString sum(left);
    return sum += right;
}
