// Items of a line of text: taking them off, quoting them, testing and padding.
#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

/// Free functions on single lines of text, without state.
///
/// "Blank" is what the regular expression \s matches: space, tab, line feed,
/// vertical tab, form feed and carriage return. Digits are "0" to "9" and
/// every character beyond ASCII that QChar calls a number.
namespace data
{

/// Takes the first item off a line.
///
/// An item ends at the next blank. One that opens with a double quote ends at
/// the next double quote, may hold blanks or nothing, and comes without the
/// quotes; there is no escaping. A quote that is not closed runs to the end of
/// the line and is reported to the debug log, as is a quote at the end of a
/// line whose last item did not open with one (the item keeps it).
///
/// @param item  the item; empty where the line holds none
/// @return what follows the item, its leading blanks included
QString nextItem(const QString& line, QString& item);

/// All items of a line, in order, without the empty ones.
QStringList splitItems(const QString& line);

/// The items that follow the first prefix.size() characters of a line, which
/// are not looked at. Empty items stay, so blanks at the end of the line give
/// one empty item more.
QStringList splitItemsAfter(const QString& line, const QString& prefix);

/// Takes the items that follow @p key in a line that starts with it.
///
/// @param items  the items as of splitItemsAfter(); left alone where the line
///               does not start with @p key
/// @return whether the line starts with @p key and has @p minCount items or more
bool itemsAfterKey(const QString& line, QStringList& items, int minCount, const QString& key);

/// The energies of a typed list, each as it was typed.
///
/// Commas count as blanks and blanks are folded; the list in that form goes to
/// the debug log. Items that do not read as a number above 0.0 are skipped.
///
/// @param rows  the most items to return; later ones are dropped
QList<QString> energiesOfList(const QString& text, int rows);

/// The part of a line before its first "#" outside quotes; the line itself if
/// there is none. Single and double quotes toggle one and the same state, so
/// one kind closes what the other opened.
///
/// @param comment  the text after the "#"; left alone where there is none
QString stripComment(const QString& line, QString& comment);

/// Whether a line holds nothing but blanks and a comment.
bool isBlankOrComment(const QString& line);

/// Whether @p text begins with @p start, case sensitive.
bool startsWithText(const QString& text, const QString& start);

/// The line without its leading blanks, cut to a length of the index of the
/// last non-blank in @p line less 1.
///
/// The index counts the leading blanks too, so a line without any loses its
/// last two characters, one with a single leading blank loses one, and one
/// with more keeps its text and perhaps trailing blanks. Kept as it is.
/// A length below 0 counts as 0; a line of blanks gives an empty string.
QString trimmed(const QString& line);

/// @p text as a field of a comma-separated line: with a double quote in it,
/// every such quote is doubled and the whole is put in double quotes; with a
/// comma only, it is put in double quotes; otherwise it stays.
QString quotedIfNeeded(const QString& text);

/// @p text with a backslash before every double quote.
QString quoteEscaped(const QString& text);

/// quoteEscaped() between double quotes.
QString quoted(const QString& text);

/// A comma and quoted().
QString commaQuoted(const QString& text);

/// All texts of a list in double quotes with a blank between two of them.
/// Quotes in a text are not escaped. The whole is simplified, so blanks within
/// a text are folded, too.
QString joinQuoted(const QStringList& texts);

/// Takes the first field off a comma-separated line.
///
/// A field that opens with a double quote runs to its closing quote; commas in
/// it are text, and a doubled quote stands for one. What stands between the
/// closing quote and the comma belongs to the field as it is. A quote that is
/// not closed runs to the end of the line. Quotes elsewhere are text.
///
/// @return what follows the comma; empty where there is no comma
QString commaField(const QString& line, QString& field);

/// commaField() for fields in which quotes open and close anywhere: the quotes
/// are dropped, and between them a comma is text and a doubled quote stands
/// for one.
QString commaFieldLoose(const QString& line, QString& field);

/// The text that follows the first @p word in @p text, up to @p delimiter or
/// the end, without the delimiters it begins with. Empty if the word is not
/// there.
QString fieldAfter(const QString& text, const QString& word, QChar delimiter);

/// Whether the last non-blank of @p line is a backslash, the mark of a line
/// that goes on. If so the line is cut before the mark.
bool endsWithBackslash(QString& line);

/// @p line without its mark of a line that goes on, and without a second one
/// before it. A third stays.
QString dropBackslash(const QString& line);

/// Whether @p text, simplified, is a sign, a digit or a point followed by
/// digits, with one point at most in all. A sign or a point alone passes;
/// exponents do not.
bool isRealNumber(const QString& text);

/// Whether @p text, simplified, is a sign or a digit followed by digits. A
/// sign alone passes.
bool isInteger(const QString& text);

/// Whether @p text, simplified, is all digits, one at least.
bool isDigits(const QString& text);

/// @p text with blanks added to reach @p length characters: 101 blanks at
/// most. A longer text is not cut.
QString padded(const QString& text, int length);

/// @p n blanks: 101 at most, none where @p n is below 0.
QString blanks(int n);

/// A number with a comma after every three digits, counted to the left from
/// the first "." or from the end. @p number has no sign: one would count as a
/// digit, so that "-123" gives "-,123".
QString withThousands(const QString& number);

} // namespace data
