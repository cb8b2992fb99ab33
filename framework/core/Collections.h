// CList and CArray.
//
// Covered: the documented members below. The block size of CList and the growth of CArray::SetSize are hints
// that the implementation does not need; the signatures are kept. A POSITION stays valid until its element is
// removed.
#pragma once

#include "Object.h"

#include <cstddef>
#include <vector>

/// Doubly linked list; owns its elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject {
public:
    explicit CList(INT_PTR nBlockSize = 10) noexcept { static_cast<void>(nBlockSize); }
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const noexcept { return m_count; }
    BOOL IsEmpty() const noexcept { return m_count == 0; }

    POSITION AddTail(ARG_TYPE newElement) { return Append(new Node{newElement, m_tail, nullptr}); }

    POSITION GetHeadPosition() const noexcept { return ToPosition(m_head); }
    /// The element at the position, which moves on and becomes null after the last one.
    TYPE& GetNext(POSITION& rPosition) { return Step(rPosition)->value; }
    const TYPE& GetNext(POSITION& rPosition) const { return Step(rPosition)->value; }
    TYPE& GetAt(POSITION position) { return ToNode(position)->value; }
    const TYPE& GetAt(POSITION position) const { return ToNode(position)->value; }

    void RemoveAt(POSITION position);
    void RemoveAll();

    /// The first element equal to the value, searched after `startAfter` unless null; null when there is
    /// none.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const;

private:
    struct Node {
        TYPE value;
        Node* previous;
        Node* next;
    };

    static POSITION ToPosition(Node* node) noexcept { return reinterpret_cast<POSITION>(node); }
    static Node* ToNode(POSITION position) noexcept { return reinterpret_cast<Node*>(position); }
    static Node* Step(POSITION& position) noexcept {
        Node* node = ToNode(position);
        position = ToPosition(node->next);
        return node;
    }
    POSITION Append(Node* node) noexcept;

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    INT_PTR m_count = 0;
};

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Append(Node* node) noexcept {
    (node->previous ? node->previous->next : m_head) = node;
    m_tail = node;
    ++m_count;
    return ToPosition(node);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAt(POSITION position) {
    Node* node = ToNode(position);
    (node->previous ? node->previous->next : m_head) = node->next;
    (node->next ? node->next->previous : m_tail) = node->previous;
    --m_count;
    delete node;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAll() {
    while (m_head) {
        RemoveAt(ToPosition(m_head));
    }
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Find(ARG_TYPE searchValue, POSITION startAfter) const {
    Node* node = startAfter ? ToNode(startAfter)->next : m_head;
    while (node && !(node->value == searchValue)) {
        node = node->next;
    }
    return ToPosition(node);
}

/// Growable array; owns its elements. Places are checked: one outside the array throws std::out_of_range.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;

    INT_PTR GetSize() const noexcept { return static_cast<INT_PTR>(m_elements.size()); }
    INT_PTR GetCount() const noexcept { return GetSize(); }
    BOOL IsEmpty() const noexcept { return m_elements.empty(); }
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1) {
        static_cast<void>(nGrowBy);
        m_elements.resize(static_cast<size_t>(nNewSize));
    }

    /// Appends, and returns the new element's place.
    INT_PTR Add(ARG_TYPE newElement) {
        m_elements.push_back(newElement);
        return GetSize() - 1;
    }
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1) {
        const auto first = m_elements.begin() + nIndex;
        m_elements.erase(first, first + nCount);
    }
    void RemoveAll() noexcept { m_elements.clear(); }

    TYPE& GetAt(INT_PTR nIndex) { return m_elements.at(static_cast<size_t>(nIndex)); }
    const TYPE& GetAt(INT_PTR nIndex) const { return m_elements.at(static_cast<size_t>(nIndex)); }
    TYPE& operator[](INT_PTR nIndex) { return GetAt(nIndex); }
    const TYPE& operator[](INT_PTR nIndex) const { return GetAt(nIndex); }

private:
    std::vector<TYPE> m_elements;
};
