#include "viewer/mail_in_editor.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "viewer/show_text.h"

namespace tlvn {

namespace {

// True when nothing was lost.
bool ConvertTo(CodeType to, CodeType from, const std::string& text, CBuffer& out)
{
    return ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, 0) ==
           0;
}

} // namespace

void ShowMailInEditor(const Mail& mail, CEditorWnd& editor)
{
    const MailText text = mail.ReadText();
    const std::string header = FormatMailHeader(mail);
    CodeType editForm = CodeTypeSave2Edit(text.code.type);
    CBuffer headerText;
    CBuffer bodyText;
    if (!ConvertTo(editForm, CT_UTF8, header, headerText) ||
        !ConvertTo(editForm, text.code.type, text.bytes, bodyText)) {
        editForm = CT_UNICODE;
        ConvertTo(editForm, CT_UTF8, header, headerText);
        ConvertTo(editForm, text.code.type, text.bytes, bodyText);
    }
    editor.SetDocument(editForm, bodyText, bodyText.GetLength());
    editor.InsertHeaderText(headerText, headerText.GetLength());
}

} // namespace tlvn
