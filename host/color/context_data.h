#pragma once

#include <memory>

#include "host/color/context.h"

#include "color/icc_engine.h"

/// The shared content of a context.
struct ColorSystem::ColorContext::Data {
    std::unique_ptr<const host::detail::IccEngine> engine;  ///< null without profiles
};
