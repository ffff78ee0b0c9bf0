// Precompiled with every test program.
#pragma once

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>
