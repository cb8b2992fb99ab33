// The fixture of the tests of a control as an OLE object.
#pragma once

#include "OleTestControl.h"

#include <OleTest.h>

/// A control whose connection points and container are at hand.
class ControlObjectTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_control = CreateControl();
        m_object = m_control.As<IOleObject>(IID_IOleObject);
    }
    void TearDown() override {
        m_object.Reset();
        m_control.Reset();
        EXPECT_EQ(1, m_container.References());
        OleTest::TearDown();
    }
    ComPtr<IConnectionPoint> Point(REFIID iid) {
        ComPtr<IConnectionPoint> point;
        m_control.As<IConnectionPointContainer>(IID_IConnectionPointContainer)
            ->FindConnectionPoint(iid, point.Receive());
        return point;
    }
    void SetAmbient(DISPID id, VARTYPE type, long value) {
        VARIANT variant{};
        variant.vt = type;
        variant.lVal = value;
        m_container.ambients[id] = variant;
    }

    MockContainer m_container;
    ComPtr<IUnknown> m_control;
    ComPtr<IOleObject> m_object;
};
