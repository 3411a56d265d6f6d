#include "viewer/win32/mail_list_wnd.h"

#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

namespace tlvn {

namespace {

constexpr UINT kColumnTexts[] = {IDS_COLUMN_SENDER, IDS_COLUMN_SUBJECT, IDS_COLUMN_DATE,
                                 IDS_COLUMN_SIZE};
constexpr int kDefaultWidths[] = {120, 220, 110, 56};
constexpr INT64 kKilobyte = 1024;

WString FormatDate(INT64 date)
{
    WString day;
    WString time;
    if (date < 0 || !FormatLocalDate(date, TW("yyyy/MM/dd"), day) ||
        !FormatLocalTime(date, TW("HH:mm"), time))
        return {};
    return day + TW(' ') + time;
}

WString FormatSize(INT64 size)
{
    if (size < 0)
        return {};
    return Utf8ToUtf16(std::to_string((size + kKilobyte - 1) / kKilobyte) + " KB");
}

WString FormatCell(const MailRow& row, MailColumn column)
{
    switch (column) {
    case MailColumn::Sender:
        return Utf8ToUtf16(row.sender);
    case MailColumn::Subject:
        return Utf8ToUtf16(row.subject);
    case MailColumn::Date:
        return FormatDate(row.date);
    default:
        return FormatSize(row.size);
    }
}

} // namespace

int MailListWnd::CreateList(CWnd* parent, UINT id, const ViewSettings& settings)
{
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                             LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;
    if (!CreateEx(WS_EX_CLIENTEDGE, "SysListView32", "", kStyle, CRect(0, 0, 0, 0), parent, id))
        return 0;
    SetFont(GetDialogFont());
    SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP | LVS_EX_DOUBLEBUFFER);

    m_order = settings.GetListOrder();
    int widths[ViewSettings::kColumns];
    std::copy(std::begin(kDefaultWidths), std::end(kDefaultWidths), widths);
    settings.GetColumnWidths(widths);
    for (int i = 0; i < ViewSettings::kColumns; ++i) {
        WString text = LoadText(kColumnTexts[i]);
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = static_cast<MailColumn>(i) == MailColumn::Size ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = widths[i];
        column.pszText = text.data();
        SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    ShowOrder();
    return 1;
}

void MailListWnd::SaveTo(ViewSettings& settings) const
{
    int widths[ViewSettings::kColumns];
    for (int i = 0; i < ViewSettings::kColumns; ++i)
        widths[i] = static_cast<int>(SendMessage(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i), 0));
    settings.SetColumnWidths(widths);
    settings.SetListOrder(m_order);
}

bool MailListWnd::Open(const std::string& path, std::string& error)
{
    m_path = path;
    const bool opened = m_list.Open(path, error);
    SendMessage(LVM_SETITEMCOUNT, 0, 0);
    return opened;
}

bool MailListWnd::Step(int milliseconds)
{
    if (!m_list.IsReading())
        return false;
    const bool more = m_list.Step(milliseconds);
    SendMessage(LVM_SETITEMCOUNT, static_cast<WPARAM>(m_list.GetCount()),
                LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    if (!more)
        Sort();
    return more;
}

int MailListWnd::GetFocusedRow() const
{
    return static_cast<int>(SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(-1),
                                        MAKELPARAM(LVNI_FOCUSED | LVNI_SELECTED, 0)));
}

std::vector<int> MailListWnd::GetChosenRows() const
{
    std::vector<int> rows;
    for (int row = -1;;) {
        row = static_cast<int>(
            SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(row), MAKELPARAM(LVNI_SELECTED, 0)));
        if (row < 0)
            return rows;
        rows.push_back(row);
    }
}

int MailListWnd::GetChosenCount() const
{
    return static_cast<int>(SendMessage(LVM_GETSELECTEDCOUNT));
}

void MailListWnd::ChooseRow(int row)
{
    if (row < 0 || row >= m_list.GetCount())
        return;
    SetRowState(-1, 0);
    SetRowState(row, LVIS_SELECTED | LVIS_FOCUSED);
    SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void MailListWnd::ChooseAll()
{
    const int focused = GetFocusedRow();
    SetRedraw(FALSE); // or each row is drawn by itself
    SetRowState(-1, LVIS_SELECTED);
    if (focused >= 0)
        SetRowState(focused, LVIS_SELECTED | LVIS_FOCUSED);
    SetRedraw(TRUE);
    Invalidate();
}

// Of a row or, with -1, of all: chosen or not, with the focus or without.
void MailListWnd::SetRowState(int row, UINT state)
{
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = state;
    SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

int MailListWnd::FindFile(std::string_view path) const
{
    for (int row = 0; row < m_list.GetCount(); ++row)
        if (GetLastName(m_list.GetPath(row)) == GetLastName(path))
            return row;
    return -1;
}

bool MailListWnd::HandleNotify(NMHDR* header)
{
    if (header->code == LVN_GETDISPINFOW) {
        GiveText(reinterpret_cast<NMLVDISPINFOW*>(header)->item);
        return true;
    }
    if (header->code != LVN_COLUMNCLICK)
        return false;
    const auto column = static_cast<MailColumn>(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem);
    m_order = {column, m_order.column == column ? !m_order.ascending : true};
    Sort();
    return true;
}

// Rows change their places below the control, which knows what is chosen by row.
void MailListWnd::Sort()
{
    const std::vector<int> rows = GetChosenRows();
    const int focused = GetFocusedRow();
    const int focusedMail = focused < 0 ? -1 : m_list.GetMailOfRow(focused);
    std::vector<bool> chosen(static_cast<std::size_t>(m_list.GetCount()));
    for (const int row : rows)
        chosen[static_cast<std::size_t>(m_list.GetMailOfRow(row))] = true;
    m_list.Sort(m_order.column, m_order.ascending);

    SetRedraw(FALSE);
    const bool all = rows.size() == chosen.size();
    SetRowState(-1, all ? UINT{LVIS_SELECTED} : 0U);
    for (int row = 0; !all && !rows.empty() && row < m_list.GetCount(); ++row)
        if (chosen[static_cast<std::size_t>(m_list.GetMailOfRow(row))])
            SetRowState(row, LVIS_SELECTED);
    if (focusedMail >= 0) {
        const int row = m_list.FindRow(focusedMail);
        SetRowState(row, LVIS_SELECTED | LVIS_FOCUSED);
        SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    }
    SetRedraw(TRUE);
    ShowOrder();
    Invalidate();
}

// The arrow in the header of the column by which the rows are sorted.
void MailListWnd::ShowOrder()
{
    const auto header = reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER));
    for (int i = 0; i < ViewSettings::kColumns; ++i) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == static_cast<int>(m_order.column))
            item.fmt |= m_order.ascending ? HDF_SORTUP : HDF_SORTDOWN;
        ::SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(&item));
    }
}

void MailListWnd::GiveText(LVITEMW& item)
{
    if ((item.mask & LVIF_TEXT) == 0 || item.cchTextMax <= 0 || item.iItem < 0 ||
        item.iItem >= m_list.GetCount())
        return;
    const WString text =
        FormatCell(m_list.GetRow(item.iItem), static_cast<MailColumn>(item.iSubItem));
    const std::size_t length =
        text.copy(item.pszText, static_cast<std::size_t>(item.cchTextMax) - 1);
    item.pszText[length] = 0;
}

} // namespace tlvn
