#pragma once

// The same for the tests of windows.

#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>

#include "support/precompiled.h"
