// Precompiled with every target that shows windows or draws.
#pragma once

#include <QtGui>
#include <QtWidgets>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>
