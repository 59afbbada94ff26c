#pragma once
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "BuildTreeEngine.h"
#include "qt/VexplotWidget.h"

namespace vexplot {

// The widget as a host embeds it: 640 x 480, shown, on the engine plug-in
// of the build tree registered in the tests' in-memory settings store. A
// test is skipped where no OpenGL context can be made.
class ShownWidgetTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { RegisterBuildTreeEngine(); }

    void SetUp() override {
        widget = std::make_unique<VexplotWidget>();
        widget->resize(640, 480);
        widget->show();
        QApplication::processEvents();
        if (!widget->IsReady()) GTEST_SKIP() << "no OpenGL context on this machine";
    }

    std::unique_ptr<VexplotWidget> widget;
};

}  // namespace vexplot
