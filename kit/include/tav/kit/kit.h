#pragma once

/// @file
/// The whole kit.

#include <tav/kit/Document.h>
#include <tav/kit/Export.h>
#include <tav/kit/Files.h>
#include <tav/kit/Plugin.h>
#include <tav/kit/PluginLoader.h>
#include <tav/kit/StandardCompound.h>
#include <tav/kit/StandardRuntime.h>
#include <tav/kit/UndoStack.h>
