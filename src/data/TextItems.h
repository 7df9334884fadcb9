// Functions that split, quote, test and format text.
#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

/// Spectra and maps, the readers of their files, and functions on lines of text.
///
/// In the functions on text, a blank is a space, tab, line feed, vertical tab, form
/// feed or carriage return. Digits are "0" to "9" and every character outside ASCII for
/// which QChar::isNumber() is true.
namespace data
{

/// Splits the first item off a line.
///
/// An item ends at the next blank. An item that starts with a double quote ends at the
/// next double quote instead; it can contain blanks or be empty, is returned without
/// the quotes, and has no escape character. If the closing quote is missing, the item
/// extends to the end of the line; the debug log reports this. If the last item ends with
/// a quote but does not start with one, the item keeps the quote; the debug log reports
/// this, too.
///
/// @param item  receives the item; empty if the line contains none
/// @return the text after the item, including its leading blanks
QString nextItem(const QString& line, QString& item);

/// All items of a line, in order, without the empty ones.
QStringList splitItems(const QString& line);

/// The items after the first prefix.size() characters of a line; these characters are
/// not compared with @p prefix. Empty items are kept, so blanks at the end of the line
/// add one empty item.
QStringList splitItemsAfter(const QString& line, const QString& prefix);

/// Finds the items after @p key in a line that starts with @p key.
///
/// @param items  receives the items as splitItemsAfter() returns them; unchanged if the
///               line does not start with @p key
/// @return whether the line starts with @p key and has at least @p minCount items
bool itemsAfterKey(const QString& line, QStringList& items, int minCount, const QString& key);

/// The energies of a list that the user typed, each as text.
///
/// Commas count as blanks. The list, after QString::simplified(), is written to the
/// debug log. Items that are not a number above 0.0 are skipped.
///
/// @param rows  largest number of items to return; further items are dropped
QList<QString> energiesOfList(const QString& text, int rows);

/// The part of a line before its first "#" outside quotes; the whole line if there is
/// none. Single and double quotes are not distinguished: either kind closes a quotation
/// that the other kind opened.
///
/// @param comment  receives the text after the "#"; unchanged if there is none
QString stripComment(const QString& line, QString& comment);

/// Whether a line contains nothing but white space (QChar::isSpace()), apart from a comment
/// as found by stripComment().
bool isBlankOrComment(const QString& line);

/// Whether @p text starts with @p start; case sensitive.
bool startsWithText(const QString& text, const QString& start);

/// The line without its leading blanks, cut to k - 1 characters, where k is the index of
/// the last non-blank in the whole @p line.
///
/// On purpose, k includes the leading blanks. Without leading blanks, the text up to the
/// last non-blank therefore loses its last two characters; with one leading blank, it loses
/// its last character. With two or more leading blanks, the whole text remains, possibly
/// with some trailing blanks. A negative length counts as 0; for a line of blanks the
/// result is empty.
QString trimmed(const QString& line);

/// @p text as a field of a comma-separated line. Text with a double quote is put in
/// double quotes, with each quote in it doubled. Text with a comma but no double quote is
/// put in double quotes. Other text is returned unchanged.
QString quotedIfNeeded(const QString& text);

/// @p text with a backslash before every double quote.
QString quoteEscaped(const QString& text);

/// @p text between double quotes, with a backslash before every double quote in it.
QString quoted(const QString& text);

/// A comma, followed by @p text as quoted() returns it.
QString commaQuoted(const QString& text);

/// The texts of a list, each in double quotes, separated by blanks. Quotes in a text are
/// not escaped. QString::simplified() is applied to the result, so each run of white space
/// within a text becomes one space.
QString joinQuoted(const QStringList& texts);

/// Splits the first field off a comma-separated line.
///
/// A field that starts with a double quote extends to its closing quote; commas in it are
/// text, and a doubled quote means one quote character. Text between the closing quote
/// and the comma is appended to the field unchanged. If the closing quote is missing,
/// the field extends to the end of the line. Quotes in other places are text.
///
/// @param field  receives the field
/// @return the text after the comma; empty if there is no comma
QString commaField(const QString& line, QString& field);

/// Splits the first field off a comma-separated line, like commaField(), but quotes can
/// open and close anywhere in a field. The quotes are dropped; between them a comma is text
/// and a doubled quote means one quote character.
QString commaFieldLoose(const QString& line, QString& field);

/// The text after the first @p word in @p text, up to @p delimiter or to the end.
/// Delimiters directly after @p word are skipped. Empty if @p word is not found.
QString fieldAfter(const QString& text, const QString& word, QChar delimiter);

/// Whether the last non-blank of @p line is a backslash, which means that the text continues
/// on the next line. If so, @p line is cut before the backslash.
bool endsWithBackslash(QString& line);

/// @p line without the backslash at its end (see endsWithBackslash()) and without a second
/// backslash before it. A third backslash is kept.
QString dropBackslash(const QString& line);

/// Whether @p text, simplified, is a sign, a digit or a point, followed by digits, with
/// at most one point in total. A sign or a point alone is accepted; an exponent is not.
bool isRealNumber(const QString& text);

/// Whether @p text, simplified, is a sign or a digit, followed by digits. A sign alone is
/// accepted.
bool isInteger(const QString& text);

/// Whether @p text, simplified, consists of at least one digit and nothing else.
bool isDigits(const QString& text);

/// @p text padded at its end with blanks to @p length characters, but with at most 101
/// blanks. A longer text is returned unchanged.
QString padded(const QString& text, int length);

/// @p n blanks, but at most 101; none if @p n is below 0.
QString blanks(int n);

/// A number with commas between groups of three digits, counted to the left from the
/// first "." or from the end. @p number should have no sign: a sign counts as a digit, so
/// "-123" becomes "-,123".
QString withThousands(const QString& number);

} // namespace data
