#include "afx.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class Shape : public CObject {
    DECLARE_DYNAMIC(Shape)
};
IMPLEMENT_DYNAMIC(Shape, CObject)

class Square : public Shape {
    DECLARE_DYNCREATE(Square)
};
IMPLEMENT_DYNCREATE(Square, Shape)

class CountedException : public CException {
public:
    CountedException(BOOL autoDelete, int& deleted) : CException(autoDelete), m_deleted(deleted) {}
    ~CountedException() override { ++m_deleted; }

private:
    int& m_deleted;
};

TEST(Object, KnowsItsClassAndItsBases) {
    const Square square;
    EXPECT_STREQ(square.GetRuntimeClass()->m_lpszClassName, "Square");
    EXPECT_EQ(square.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(Square)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(Square)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(Shape)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(square.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_FALSE(Shape().IsKindOf(RUNTIME_CLASS(Square)));
}

TEST(Object, IsCreatedByClassWhenItsClassAllowsIt) {
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Square)->CreateObject());
    ASSERT_TRUE(made);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(Square)));
    EXPECT_EQ(RUNTIME_CLASS(Shape)->CreateObject(), nullptr);
}

TEST(Exception, DeleteFreesOnlyWhatWasAllocated) {
    int deleted = 0;
    CountedException lasting(FALSE, deleted);
    lasting.Delete();
    EXPECT_EQ(deleted, 0);
    (new CountedException(TRUE, deleted))->Delete();
    EXPECT_EQ(deleted, 1);
}

TEST(Exception, TheFrameworksOwnAreThrownAsPointersOfTheirClass) {
    EXPECT_THROW(AfxThrowUserException(), CUserException*);
    EXPECT_THROW(AfxThrowResourceException(), CResourceException*);
    EXPECT_THROW(AfxThrowNotSupportedException(), CNotSupportedException*);
    EXPECT_THROW(AfxThrowUserException(), CException*);
}

} // namespace
