// Everything the library offers, in one include.

#pragma once

#include "framework/framework.h"
#include "framework/x_message_box.h"

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

#include "mailtext/address.h"
#include "mailtext/address_check.h"
#include "mailtext/address_list.h"
#include "mailtext/address_trim.h"
#include "mailtext/base64.h"
#include "mailtext/binhex.h"
#include "mailtext/hex.h"
#include "mailtext/imap_utf7.h"
#include "mailtext/mail_date.h"
#include "mailtext/mail_finder.h"
#include "mailtext/quoted_printable.h"
#include "mailtext/transfer_encoding.h"
#include "mailtext/url_finder.h"
#include "mailtext/uuencode.h"

#include "persist/regexp/regexp.h"

#include "persist/blowfish.h"
#include "persist/cipher_container.h"
#include "persist/cipher_text.h"
#include "persist/md5.h"
#include "persist/random.h"
#include "persist/setting_data.h"

#include "persist/zip/zip.h"

#include "editor/color.h"
#include "editor/editor_wnd.h"
#include "editor/link_range.h"
#include "editor/metrics.h"

#include "ui/accel_data.h"
#include "ui/three_pane_wnd.h"
