// Everything the library offers, in one include.

#pragma once

#include "framework/framework.h"

#include "foundation/allocation.h"
#include "foundation/buffer.h"
#include "foundation/char_type.h"
#include "foundation/code_type.h"
#include "foundation/fix_buffer.h"
#include "foundation/multibyte.h"
#include "foundation/quoted_text.h"
#include "foundation/scanner.h"
#include "foundation/str_exception.h"
#include "foundation/text_buffer.h"
#include "foundation/text_compare.h"
#include "foundation/text_search.h"
#include "foundation/trace.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "charcode/detect.h"
#include "charcode/flagged_char.h"
#include "charcode/japanese.h"
#include "charcode/kana.h"

#include "mailtext/base64.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/transfer_encoding.h"
#include "mailtext/uuencode.h"

#include "editor/color.h"
#include "editor/editor_wnd.h"
#include "editor/metrics.h"
