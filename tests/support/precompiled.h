#pragma once

// What almost every test includes, compiled once.
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>
