#!/usr/bin/env python3
"""Writes the mails of samples/ and what tests/viewer expects to read in them.

The mails are bytes as they arrive: CR LF line ends, every character code and transfer
encoding a mail of Japan may come in, and some that break the rules. They are checked in;
run this again after changing a text:

    python3 scripts/make-samples.py

Beside each mail NAME.eml the expectation tests/viewer/expected/NAME.txt is written, in UTF-8:
the decoded subject, an empty line, and the text with LF line ends. It comes from the texts
below by Python's own codecs, so it judges the library independently.

Persons and firms are invented; all domains are the reserved example ones.
"""

import base64
import pathlib
import quopri

ROOT = pathlib.Path(__file__).resolve().parent.parent
SAMPLES = ROOT / "samples"
EXPECTED = ROOT / "tests" / "viewer" / "expected"

ESC_KANJI, ESC_KANA, ESC_ASCII = b"\x1b$B", b"\x1b(I", b"\x1b(B"


def sjis_pair_to_jis(lead, trail):
    """The JIS X 0208 pair of a Shift_JIS pair, NEC row 13 included."""
    row = (lead - (0x70 if lead < 0xA0 else 0xB0)) * 2
    if trail < 0x9F:
        return bytes((row - 1, trail - (0x20 if trail > 0x7F else 0x1F)))
    return bytes((row, trail - 0x7E))


def to_iso_2022_jp(text, keep_mode_at_line_end=(), shift_out_kana=False):
    """ISO-2022-JP as mail programs of Japan write it: row 13 and half-width katakana too.

    Lines whose number is in keep_mode_at_line_end do not return to ASCII before their line
    end. With shift_out_kana, half-width katakana stand between SO and SI instead of behind
    ESC ( I.
    """
    out = bytearray()
    mode = ESC_ASCII

    def switch(to):
        nonlocal mode
        if mode == to:
            return
        if shift_out_kana and mode == ESC_KANA:
            out.append(0x0F)
        if shift_out_kana and to == ESC_KANA:
            out.extend(ESC_ASCII if mode == ESC_KANJI else b"")
            out.append(0x0E)
        elif not (shift_out_kana and mode == ESC_KANA and to == ESC_ASCII):
            out.extend(to)
        mode = to

    line = 0
    for c in text:
        if c == "\n":
            if line not in keep_mode_at_line_end:
                switch(ESC_ASCII)
            out += b"\r\n"
            line += 1
            continue
        code = c.encode("cp932")
        if len(code) == 2:
            switch(ESC_KANJI)
            out += sjis_pair_to_jis(*code)
        elif code[0] >= 0xA1:
            switch(ESC_KANA)
            out.append(code[0] & 0x7F)
        else:
            switch(ESC_ASCII)
            out += code
    switch(ESC_ASCII)
    return bytes(out)


def encode(text, charset):
    if charset == "ISO-2022-JP":
        return to_iso_2022_jp(text)
    codec = {"Shift_JIS": "cp932", "EUC-JP": "euc_jp"}.get(charset, charset)
    return text.replace("\n", "\r\n").encode(codec)


def word(text, charset, kind="B"):
    """One encoded word of RFC 2047."""
    data = encode(text, charset)
    if kind == "B":
        return b"=?%s?B?%s?=" % (charset.encode(), base64.b64encode(data))
    quoted = b"".join(
        bytes((b,)) if chr(b).isalnum() and b < 128 else b"_" if b == 32 else b"=%02X" % b
        for b in data)
    return b"=?%s?Q?%s?=" % (charset.encode(), quoted)


def words(texts, charset, kind="B"):
    """A header value of several encoded words, one a line."""
    return b"\r\n ".join(word(t, charset, kind) for t in texts)


def base64_lines(data):
    return base64.encodebytes(data).replace(b"\n", b"\r\n")


def quoted_printable(data):
    lines = data.split(b"\r\n")
    return b"\r\n".join(
        quopri.encodestring(line).replace(b"\n", b"\r\n") for line in lines)


def header(*fields):
    return b"".join(
        name.encode() + b": " + (value if isinstance(value, bytes) else value.encode()) + b"\r\n"
        for name, value in fields)


def write(name, mail, subject, text):
    (SAMPLES / f"{name}.eml").write_bytes(mail)
    (EXPECTED / f"{name}.txt").write_bytes(f"{subject}\n\n{text}".encode())


def content(charset, encoding):
    kind = 'text/plain; charset="%s"' % charset if charset else "text/plain"
    return (("MIME-Version", "1.0"), ("Content-Type", kind),
            ("Content-Transfer-Encoding", encoding))


def iso_2022_jp():
    text = """\
株式会社 緑風堂
営業部  中村 様

いつもお世話になっております。
㈱青空企画の佐伯です。

先日は、お忙しいなか打ち合わせのお時間をいただき、
ありがとうございました。
秋のカタログの進め方を下のとおりまとめました。

  ① 写真の撮影       10月 6日(月)～8日(水)
  ② 原稿のご確認     10月15日(水)まで
  ③ 印刷・納品       11月 4日(火)

撮影の場所と持ち物は、こちらのページにまとめてあります。
地図も載せましたので、当日はスマートフォンでご覧ください。

https://www.example.co.jp/catalogue/2025/autumn/schedule/index.html?view=calendar&month=10&group=photo-session&lang=ja

見積書の№は A-0427 のままで変わりません。
ｶﾀﾛｸﾞ用紙は、ﾏｯﾄ紙(135kg)とｺｰﾄ紙(110kg)の2種類を
見本としてお送りします。厚さは約0.2㎜です。

ご不明な点がありましたら、saeki@example.co.jp まで
お気軽にお知らせください。
どうぞよろしくお願いいたします。

-- \n㈱青空企画  制作部
佐伯 美咲 (さえき みさき)
TEL 03-0000-0000 / FAX 03-0000-0001
mailto:saeki@example.co.jp
http://www.example.co.jp/
"""
    subject = "秋のカタログの日程について（①～③のご確認）"
    # The first two lines of the paragraph "先日は" do not return to ASCII at their ends.
    body = to_iso_2022_jp(text, keep_mode_at_line_end=(6, 7))
    mail = header(
        ("Return-Path", "<saeki@example.co.jp>"),
        ("Received", b"from mail.example.co.jp (mail.example.co.jp [192.0.2.25])\r\n"
                     b"\tby mx.example.com with ESMTP id 8F2C41A07;\r\n"
                     b"\tMon, 22 Sep 2025 10:14:31 +0900 (JST)"),
        ("From", word("佐伯 美咲", "ISO-2022-JP") + b" <saeki@example.co.jp>"),
        ("To", word("中村 健一", "ISO-2022-JP") + b" <nakamura@example.com>"),
        ("Cc", word("青空企画 制作部", "ISO-2022-JP") + b" <seisaku@example.co.jp>,\r\n "
               + word("高橋", "ISO-2022-JP") + b" <takahashi@example.com>"),
        ("Subject", words(["秋のカタログの日程について", "（①～③のご確認）"], "ISO-2022-JP")),
        ("Date", "Mon, 22 Sep 2025 10:14:29 +0900"),
        ("Message-ID", "<20250922101429.4C1B@example.co.jp>"),
        *content("ISO-2022-JP", "7bit")) + b"\r\n" + body
    write("01-iso-2022-jp", mail, subject, text)


def shift_jis_base64():
    text = """\
図書委員のみなさん

来週の読書会の場所が変わりました。
2階の会議室ではなく、1階の「ことりの部屋」に集まってください。

  日時  6月12日(木) 午後3時30分から
  本    『能登の表具師』第5章まで
  費用  お茶代として200円

ソファーの数に限りがあるので、座布団を持ってきてもらえると
助かります。十分な数の資料(約30部)は図書室で用意します。

欠席する人は、前の日までに返信をお願いします。

                                        図書室  柿沼
"""
    subject = "読書会の会場変更のお知らせ"
    mail = header(
        ("From", word("柿沼 聡", "Shift_JIS") + b" <kakinuma@example.jp>"),
        ("To", "tosho-iin@example.jp"),
        ("Subject", word(subject, "Shift_JIS")),
        ("Date", "Thu, 05 Jun 2025 16:40:02 +0900"),
        ("Message-ID", "<kakinuma.0605@example.jp>"),
        *content("Shift_JIS", "base64")) + b"\r\n" + base64_lines(encode(text, "Shift_JIS"))
    write("02-shift-jis-base64", mail, subject, text)


def euc_jp_quoted_printable():
    text = """\
小山さん

計算機室の井口です。サーバの入れ替え作業の連絡です。

  開始  8月23日(土) 22:00
  終了  8月24日(日) 6:00 (予定)

このあいだ、メールの送受信と共有フォルダは使えません。
作業が終わったら、次の式が成り立つことを確かめてください。

    空き容量 = 全体の容量 - 使用量 >= 40%

行の終わりに空白がある行です。   
念のため、大切なファイルの写しを手元に残しておいてください。

井口
"""
    subject = "サーバ入れ替え作業 = 8月23日(土)"
    mail = header(
        ("From", b"IGUCHI Takashi <iguchi@example.ac.jp>"),
        ("To", word("小山", "EUC-JP") + b" <koyama@example.ac.jp>"),
        ("Subject", words(["サーバ入れ替え作業", " = 8月23日(土)"], "EUC-JP", "Q")),
        ("Date", "Wed, 20 Aug 2025 09:05:47 +0900"),
        *content("EUC-JP", "quoted-printable")) + b"\r\n" + quoted_printable(encode(text, "EUC-JP"))
    write("03-euc-jp-quoted-printable", mail, subject, text)


def utf8_base64_emoji():
    text = """\
やっほー、みんな元気？😊

土曜日のハイキング、晴れそうです☀️
おにぎり🍙は多めに作っていくね。

・集合 → 9時、駅の北口
・持ち物 → 水筒、帽子、レインコート(念のため)
・𠮷野さんと髙島さんは10時に合流

帰りに「café ひだまり」で かき氷🍧 どうですか？
写真はここに入れてください。
https://photos.example.net/album/hiking-2025?key=%E5%B1%B1

　　　　　　　　ゆうこ🐈
"""
    subject = "土曜日のハイキング🏔️ 持ち物リスト✨"
    # The subject's bytes are cut into words without regard to characters.
    data = subject.encode("utf-8")
    pieces = [data[:20], data[20:37], data[37:]]
    subject_value = b"\r\n ".join(
        b"=?UTF-8?B?" + base64.b64encode(p) + b"?=" for p in pieces)
    mail = header(
        ("From", word("ゆうこ", "UTF-8") + b" <yuko@example.net>"),
        ("To", "hiking@example.net"),
        ("Subject", subject_value),
        ("Date", "Thu, 22 May 2025 21:18:00 +0900"),
        *content("UTF-8", "base64")) + b"\r\n" + base64_lines(encode(text, "UTF-8"))
    write("04-utf-8-base64", mail, subject, text)


def utf8_quoted_printable():
    text = """\
Dear Ms. Hoshino,

ご注文ありがとうございます。ご注文番号 №2025-1187 を承りました。

  Café blend 200g × 2 .......... €17.80
  紅茶「朝もや」50g × 1 ........ €9.20

お届けは来週の火曜日ごろになります。お問い合わせは
<support@example.org> へどうぞ。

With best wishes,
Zoë Müller — Teehaus Müller & Söhne
"""
    subject = "ご注文の確認 / Your order №2025-1187"
    mail = header(
        ("From", word("Zoë Müller", "UTF-8", "Q") + b" <zoe@example.org>"),
        ("To", word("星野 あかり", "UTF-8", "Q") + b" <hoshino@example.com>"),
        ("Subject", words(["ご注文の確認", " / Your order №2025-1187"], "utf-8", "Q")),
        ("Date", "Fri, 14 Mar 2025 11:02:33 +0100"),
        *content("utf-8", "quoted-printable")) + b"\r\n" + quoted_printable(encode(text, "UTF-8"))
    write("05-utf-8-quoted-printable", mail, subject, text)


def wrong_label():
    text = """\
会員の皆さま

新しい会員システムからお送りしています。
旧システムの設定が残っているため、文字コードの表示が
正しくないことがあります。ご迷惑をおかけします。

次回の例会は、7月5日(土)午前10時からです。
出欠は https://www.example.org/rsvp/ からお知らせください。

事務局
"""
    subject = "7月の例会のご案内"
    # Both the subject's word and the text say ISO-2022-JP and are UTF-8.
    mail = header(
        ("From", b"jimukyoku@example.org"),
        ("To", b"kaiin@example.org"),
        ("Subject", b"=?ISO-2022-JP?B?" + base64.b64encode(subject.encode()) + b"?="),
        ("Date", "Sun, 22 Jun 2025 08:00:00 +0900"),
        *content("ISO-2022-JP", "8bit")) + b"\r\n" + encode(text, "UTF-8")
    write("06-wrong-label", mail, subject, text)


def no_label():
    text = """\
お疲れさまです。

複合機からの自動送信です。
スキャンした文書を共有フォルダに保存しました。

  ファイル名: 議事録_0418.pdf
  ページ数: 6

ﾄﾅｰの残量が少なくなっています。
交換の準備をお願いします。
"""
    subject = "スキャン完了のお知らせ"
    # An old machine: no MIME field, and Shift_JIS in the header as well.
    mail = header(
        ("From", b"printer@example.co.jp"),
        ("To", b"soumu@example.co.jp"),
        ("Subject", subject.encode("cp932")),
        ("Date", "Fri, 18 Apr 2025 13:22:10 +0900")) + b"\r\n" + encode(text, "Shift_JIS")
    write("07-no-label", mail, subject, text)


def quoted_reply():
    text = """\
森川さん、ありがとうございます。小川です。

> 小川さん、ご連絡ありがとうございます。
> 合宿の件ですが、次のようにしてはどうでしょうか。
>
>> 宿はどこも混んでいるようです。
>> 早めに決めたほうがよいと思います。
>>
>>> 今年の合宿は、海と山のどちらにしますか。
>>> 希望があれば、今月中に教えてください。
>>
>> わたしは山がいいです。
>
> では、山で探してみます。

賛成です。標高が高いところなら涼しくて練習もはかどりますね。
井上さんの意見も付けておきます。

＞ 去年の宿は音楽室があってよかったです。
＞＞ 食事もおいしかったですね。
｜ 交通費は一人8,000円くらいでした。
｜｜ 学割が使えます。

空きを調べて、またご連絡します。

小川
"""
    subject = "Re: Re: 夏合宿の場所"
    mail = header(
        ("From", word("小川 陽介", "ISO-2022-JP") + b" <ogawa@example.jp>"),
        ("To", word("森川 千夏", "ISO-2022-JP") + b" <morikawa@example.jp>"),
        ("Cc", word("井上", "ISO-2022-JP") + b" <inoue@example.jp>"),
        ("Subject", b"Re: Re: " + word("夏合宿の場所", "ISO-2022-JP")),
        ("Date", "Tue, 10 Jun 2025 19:31:55 +0900"),
        ("In-Reply-To", "<gasshuku.2@example.jp>"),
        ("References", b"<gasshuku.0@example.jp>\r\n <gasshuku.1@example.jp>\r\n <gasshuku.2@example.jp>"),
        *content("ISO-2022-JP", "7bit")) + b"\r\n" + encode(text, "ISO-2022-JP")
    write("08-quoted-reply", mail, subject, text)


def attachments():
    text = """\
藤田様

報告書をお送りします。ご確認ください。

  添付 1  月次報告書(9月).csv
  添付 2  グラフの画像

数字は 9月30日現在のものです。

大塚
"""
    subject = "9月の報告書をお送りします"
    html = ("<html><body><p>藤田様</p>"
            "<p>報告書をお送りします。<b>ご確認ください。</b></p></body></html>\n")
    table = "月,売上,前年比\n7,1204,98\n8,1310,103\n9,1275,101\n"
    # An image of one dot.
    image = base64.b64decode(
        "R0lGODlhAQABAIAAAAAAAP///ywAAAAAAQABAAACAUwAOw==")
    outer, inner = "=_outer_7f3a", "=_outer_7f3a_inner"
    mail = header(
        ("From", word("大塚 徹", "UTF-8") + b" <otsuka@example.com>"),
        ("To", word("藤田 様", "UTF-8") + b" <fujita@example.com>"),
        ("Subject", word(subject, "UTF-8")),
        ("Date", "Wed, 01 Oct 2025 08:55:12 +0900"),
        ("MIME-Version", "1.0"),
        ("Content-Type", f'multipart/mixed;\r\n\tboundary="{outer}"')) + b"\r\n"
    mail += b"This is a message in several parts.\r\n"
    mail += f"--{outer}\r\n".encode()
    mail += header(("Content-Type", f'multipart/alternative; boundary="{inner}"')) + b"\r\n"
    mail += f"--{inner}\r\n".encode()
    mail += header(("Content-Type", "text/plain; charset=UTF-8"),
                   ("Content-Transfer-Encoding", "base64")) + b"\r\n"
    mail += base64_lines(encode(text, "UTF-8"))
    mail += f"\r\n--{inner}\r\n".encode()
    mail += header(("Content-Type", "text/html; charset=UTF-8"),
                   ("Content-Transfer-Encoding", "quoted-printable")) + b"\r\n"
    mail += quoted_printable(encode(html, "UTF-8"))
    mail += f"\r\n--{inner}--\r\n\r\n--{outer}\r\n".encode()
    # RFC 2231: an encoded name in two pieces, a character cut between them.
    encoded = "".join(f"%{b:02X}" for b in "月次報告書(9月)".encode())
    mail += header(
        ("Content-Type", "text/csv; charset=UTF-8"),
        ("Content-Transfer-Encoding", "base64"),
        ("Content-Disposition",
         f"attachment;\r\n filename*0*=UTF-8'ja'{encoded[:24]};\r\n"
         f" filename*1*={encoded[24:]};\r\n filename*2=\".csv\"")) + b"\r\n"
    mail += base64_lines(encode(table, "UTF-8"))
    mail += f"\r\n--{outer}\r\n".encode()
    # The older way: an encoded word in the name.
    mail += header(
        ("Content-Type", b'image/gif; name="' + word("グラフ.gif", "ISO-2022-JP") + b'"'),
        ("Content-Transfer-Encoding", "base64"),
        ("Content-Disposition", "attachment")) + b"\r\n"
    mail += base64_lines(image)
    mail += f"\r\n--{outer}--\r\n".encode()
    write("09-attachments", mail, subject, text)


def links():
    text = """\
リンク集を更新しました。

・地図: <https://maps.example.com/view?lat=35.6586&lon=139.7454&zoom=16&layer=transit,walk#point-3>
・資料(PDF): http://www.example.com/docs/2025/manual_(draft).pdf
・予約は https://reserve.example.jp/form/をご利用ください。
・ファイル置き場 ftp://ftp.example.org/pub/readme.txt
・お問い合わせ: info@example.com、または mailto:support@example.com?subject=help
・担当者: 早川 <hayakawa.r+list@mail.example.co.jp>

次の行は一行がとても長く、画面の幅で折り返されます。この行には区切りになる空白がほとんどないので、文字の単位で折り返すことになりますが、行の頭に句読点が来ないように、また、始めの括弧が行の終わりに残らないように(このように)整えられるはずです。

https://long.example.net/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa/end

https://www.example.com. と (https://www.example.com/a) は文の区切りと
括弧を含みません。user@localhost はアドレスとして扱いません。
"""
    subject = "リンク集の更新: 予約ページと資料のアドレスが変わりました。折り返した件名です"
    # The subject is folded twice, the second time with a tab.
    mail = header(
        ("From", b'"Hayakawa, Rei" <hayakawa.r@example.co.jp>'),
        ("To", b"list-a@example.com,\r\n\tlist-b@example.com,\r\n list-c@example.com"),
        ("Subject", word("リンク集の更新: 予約ページと", "UTF-8") + b"\r\n "
                    + word("資料のアドレスが変わりました。", "UTF-8") + b"\r\n\t"
                    + word("折り返した件名です", "UTF-8")),
        ("Date", "Sat, 15 Nov 2025 12:00:00 +0900"),
        *content("UTF-8", "8bit")) + b"\r\n" + encode(text, "UTF-8")
    write("10-links", mail, subject, text)


def half_width_katakana():
    text = """\
ｵｷｬｸｻﾏ ｶﾞ ﾄｳﾁｬｸ ｼﾏｼﾀ。
受付のﾀﾅｶです。ロビーでお待ちです。

ﾊﾞｼｮ: 1ｶｲ ﾛﾋﾞｰ
ｼﾞｶﾝ: 14:05

この通知は古い端末から送っています。
"""
    subject = "ｵｷｬｸｻﾏのお知らせ"
    # SO and SI around the katakana; the last escape sequence is cut off behind "(", which
    # then stands in the text.
    body = to_iso_2022_jp(text + "返信は不要です", shift_out_kana=True)
    body = body.removesuffix(ESC_ASCII) + b"\x1b("
    mail = header(
        ("From", b"uketsuke@example.co.jp"),
        ("To", b"tanaka@example.co.jp"),
        ("Subject", word(subject, "ISO-2022-JP")),
        ("Date", "Tue, 04 Feb 2025 14:05:09 +0900"),
        *content("ISO-2022-JP", "7bit")) + b"\r\n" + body
    write("11-half-width-katakana", mail, subject, text + "返信は不要です(")


def koi8_r():
    text = """\
Здравствуйте, уважаемый господин Ямамото!

Благодарим Вас за письмо. Образцы бумаги отправлены вчера,
номер посылки RR000000000RU.

Подробности на сайте: http://www.example.org/paper/

С уважением,
Анна Соколова
"""
    subject = "Образцы бумаги отправлены"
    mail = header(
        ("From", word("Анна Соколова", "KOI8-R") + b" <sokolova@example.org>"),
        ("To", b"yamamoto@example.jp"),
        ("Subject", words(["Образцы", " бумаги отправлены"], "KOI8-R", "Q")),
        ("Date", "Mon, 03 Mar 2025 15:20:00 +0300"),
        *content("KOI8-R", "8bit")) + b"\r\n" + encode(text, "KOI8-R")
    write("12-koi8-r", mail, subject, text)


def iso_8859_1():
    text = """\
Chère Madame Tanabe,

merci beaucoup pour votre lettre. La répétition aura lieu le
samedi 8 février à 14 h, à l'école de musique.

Prix des places : 12 à 18 francs. Réservations à l'adresse
billets@example.net ou sur <https://www.example.net/concert>.

À bientôt,
François Béguelin
"""
    subject = "Répétition du 8 février"
    mail = header(
        ("From", word("François Béguelin", "ISO-8859-1", "Q") + b" <beguelin@example.net>"),
        ("To", b"tanabe@example.jp"),
        ("Subject", word(subject, "iso-8859-1", "Q")),
        ("Date", "Thu, 30 Jan 2025 17:45:21 +0100"),
        *content("iso-8859-1", "quoted-printable")) + b"\r\n" + quoted_printable(
            encode(text, "ISO-8859-1"))
    write("13-iso-8859-1", mail, subject, text)


def main():
    SAMPLES.mkdir(exist_ok=True)
    EXPECTED.mkdir(parents=True, exist_ok=True)
    for make in (iso_2022_jp, shift_jis_base64, euc_jp_quoted_printable, utf8_base64_emoji,
                 utf8_quoted_printable, wrong_label, no_label, quoted_reply, attachments, links,
                 half_width_katakana, koi8_r, iso_8859_1):
        make()


if __name__ == "__main__":
    main()
