#pragma once

// What nearly every test includes, read once for a whole program of tests where `GLINTARA_PRECOMPILE` is set.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
