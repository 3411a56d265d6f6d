// Everything the library offers, in one include.

#pragma once

#include "framework/framework.h"

#include "foundation/allocation.h"
#include "foundation/buffer.h"
#include "foundation/code_type.h"
#include "foundation/fix_buffer.h"
#include "foundation/multibyte.h"
#include "foundation/scanner.h"
#include "foundation/str_exception.h"
#include "foundation/text_buffer.h"
#include "foundation/trace.h"
