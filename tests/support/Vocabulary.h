// The source texts of the translation table, grouped by context, which is a class name. They
// were typed from the design of the forms and messages, so they are independent of the table.
#pragma once

#include <QMap>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tests
{

/// A requested text: the class name and the English source text.
using SourceText = QPair<QString, QString>;

inline const QStringList panelTexts{
    "Frame",
    "  Non Equiv. Meth.",
    "%1",
    ", Valence = %1, Base = %2",
    ", Valence = %1, t = %2",
    "-0.2",
    "-50",
    "1.2",
    "1.5",
    "100",
    "3.5",
    "3ps: a = %1, Valence = %2",
    "4 Points Meth.",
    "4 points.",
    "4ps",
    "4ps2: a = %1, Valence = %2, t/ts = %3",
    "51",
    "8350",
    "Amount",
    "Amount dMut",
    "Amouont",
    "Auto",
    "B.G.Line Type: ",
    "Boxes",
    "C1",
    "C2",
    "Calc.",
    "Calc. Type for t, mu0, and k: ",
    "Can't open the file [%1]",
    "Data Map",
    "Data Processing",
    "Disp Select : ",
    "Disp. Only",
    "Edge[eV]",
    "Energy Range is not selected, which should by selected by CB of TR.",
    "Eng.",
    "Eng.[eV]",
    "Equiv.",
    "Exact 4 points",
    "Exec. and Results",
    "F.P.",
    "From",
    "Full Range",
    "Hist Grams",
    "LCF",
    "Least Square",
    "Linear",
    "M2",
    "M3",
    "Map",
    "Map Select",
    "More Conds",
    "No normalize",
    "No.",
    "Non",
    "Non Equiv. Meth.",
    "Normalized by 2 Vics ",
    "Normalized by edge jump",
    "Num.",
    "Number of Valid Reference files is %1, which is less than 2",
    "Number of selected data sets %1 is less than %2.",
    "Number of selected data sets %1 is not %2.",
    "Number of valied Ref Files is %1, which is less than 2.",
    "Params for Vic. Lines",
    "Post E. Line",
    "Post Edge Start [eV]",
    "Pre E. Line",
    "Pre Edge End [eV]",
    "Ratio 1",
    "Ratio 2",
    "Ratio 3",
    "Ratio 4",
    "Ratio2",
    "Rattio 1",
    "Record Select :",
    "Ref %1",
    "Ref File %1 is not valid.",
    "Ref.1",
    "Ref.2",
    "Ref.3",
    "Ref.4",
    "Refs/Target XAFS Spectra",
    "Refs: Sub.",
    "Remove",
    "Result Map",
    "Result of LCF :: ",
    "Result of NEQ :: ",
    "Select 2D Map Data",
    "Show",
    "Show Data Map",
    "Show Graphs",
    "Show Res. Map",
    "Sub pre Vic.",
    "Target",
    "Target File1 is not valid.",
    "Target: Sub.",
    "The 1st Ref File is not valid.",
    "The 2nd Ref File is not valid.",
    "Thick.",
    "To",
    "Use",
    "V Point is not selected",
    "V Point is not selected.",
    "Valence",
    "Vic.",
    "When drawing all mut",
    "Write",
    "XAFS spectra",
    "[eV]",
    "a = %1, Valence = %2, t/ts = %3",
    "dMut",
    "dMut 1",
    "dMut 2",
    "dMut 3",
    "dMut 4",
    "mu0",
    "mut",
    "mut0",
};

/// The source texts of the table's twelve contexts.
inline const QMap<QString, QStringList> sourceTexts{
    {"FourPs", panelTexts},
    {"Displays",
     {"Frame", "Ref1", "Ref2", "Ref3", "Ref4", "Target", "Muts", "LCF vs 4PS", "Histgram of a",
      "Histgram of dMut", "dMut/v or a", "M2/M3"}},
    {"AEPoint",
     {"Frame", "No. ", "  Energy(eV)", "  mut(Ref 1)", "  mut(Ref 2)", "mut(Ref 3)", "mut(Ref 4)",
      "  mut(Target)", "   2D "}},
    {"ARefFile", {"Frame", "Ref 1", "Use", "Valence", "1", "Ratio", "dMut"}},
    {"DispABase", {"Frame", "TextLabel", " x:", "x-title", "y:", "y-title", "P/D"}},
    {"AFileSelect", {"Frame", "File", "Sel.", "Clear", "dE[eV]", "0"}},
    {"DispMBase", {"Frame", "TextLabel", "  x:", "  y:", "  Val:", "P/D"}},
    {"AXafsFileSelect", {"Frame", "Eng.[eV]", "mut", "Edge Jump : %1"}},
    {"Body", {"MainWindow"}},
    {"DispArea", {"Frame"}},
    {"PopBase", {"Frame"}},
    {"cBar", {"Frame"}},
};

/// Texts that the program requests although the table does not contain them. The program
/// shows them in English in both languages.
inline const QSet<SourceText> textsMissingInTable{
    {"Displays", "LCF vs MPS"},
    {"FourPs", "MPs"},
    {"FourPs", "multi points"},
    {"FourPs", "with Grid"},
};

/// Texts in the table that the program never requests.
inline const QSet<SourceText> unusedTexts{
    {"FourPs", "Rattio 1"},       {"FourPs", "4ps"},
    {"FourPs", "4 points."},      {"Displays", "LCF vs 4PS"},
    {"AXafsFileSelect", "Frame"},
};

/// All texts in the table.
inline QSet<SourceText> allTexts()
{
    QSet<SourceText> words;
    for (auto context = sourceTexts.cbegin(); context != sourceTexts.cend(); ++context) {
        for (const QString& source : context.value()) {
            words.insert({context.key(), source});
        }
    }
    return words;
}

/// All texts that the program requests.
inline QSet<SourceText> requestedTexts()
{
    return (allTexts() - unusedTexts) + textsMissingInTable;
}

/// The texts in @p some that are missing in @p others, sorted; used in the message of a
/// failed comparison.
inline QStringList surplus(const QSet<SourceText>& some, const QSet<SourceText>& others)
{
    QStringList texts;
    for (const SourceText& requested : some - others) {
        texts << requested.first + QLatin1String(": ") + requested.second;
    }
    texts.sort();
    return texts;
}

} // namespace tests
