#pragma once

/// The fill and outline model: everything at once. Each header stands alone as well.
#include "fom/duplication.h"
#include "fom/fill_blend.h"
#include "fom/fill_compare.h"
#include "fom/fill_defaults.h"
#include "fom/fill_files.h"
#include "fom/fill_flags.h"
#include "fom/fill_handle.h"
#include "fom/fill_list.h"
#include "fom/fill_record.h"
#include "fom/globals.h"
#include "fom/hatch_lines.h"
#include "fom/outline_list.h"
#include "fom/refcount_fill.h"
#include "fom/startup.h"
