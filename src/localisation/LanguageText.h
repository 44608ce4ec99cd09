#pragma once
#include <QHash>
#include <QString>
#include <QStringList>

namespace localisation {

// The language file in memory and the way every user-visible word is taken out of it: named
// sections, variables looked up by name, and placeholders expanded inside values. None of this
// fails: a missing section is one empty line, a missing variable comes back as an error text
// in place of the value, so a damaged file shows its damage where the words would stand.
class LanguageText {
public:
    explicit LanguageText(QString applicationId);

    const QString& applicationId() const { return applicationId_; }

    // The wanted language and the one whose text is in memory; an empty loaded ID forces the
    // next load to read the file.
    const QString& languageId() const { return languageId_; }
    void setLanguageId(const QString& id) { languageId_ = id; }
    const QString& loadedLanguage() const { return loadedLanguage_; }
    void SetLoadedLanguage(const QString& id) { loadedLanguage_ = id; }
    const QString& GetLanguageText() const { return text_; }
    void SetLanguageText(const QString& text) { text_ = text; }
    // The text for a reader that fills it in place; empties it first.
    QString& languageTextBuffer();

    // The trimmed lines of section `name` ("Menus" or "[[Menus]]"), head line first, blank and
    // ";" lines left out; one empty line when the section is missing. `name` gets its brackets.
    QStringList GetSection(QString& name) const;
    QStringList GetSection(const QString& name) const;

    // Take the code strings and the menu lines out of the text; false when a section is too
    // short to be the real one.
    bool InitCodeStrings();
    bool InitMenuStrings();
    const QStringList& codeStrings() const { return codeStrings_; }
    const QStringList& menuLines() const { return menuLines_; }

    // Gives a code string another value in memory, for this process only: the console points
    // the program at another server this way.
    void SetCodeString(const QString& name, const QString& value);
    // The resolved value of a code string; the first line whose name matches wins.
    QString GetStrLocValue(const QString& name) const;
    // The resolved value of one `name=value` or `name==value` line.
    QString ProcessLanguageLine(const QString& line) const;
    // Expands {CRLF}, {#AppID}, {#Name} (to >>>Name}), {mnu...} and variable placeholders.
    QString ResolveVariables(QString text) const;
    // The entries of a "|"-separated value, trimmed: what a combo box is filled with.
    QStringList FillComboFromLanguage(const QString& name) const;

    // While set, values of the forms {str_ and {strLoc_ErrorString are kept open by the
    // resolver. Nothing in the program sets it yet.
    bool shelterSharedValues() const { return shelter_; }
    void setShelterSharedValues(bool on) { shelter_ = on; }

private:
    void indexCodeStrings();
    QString cycleError(const QString& name) const;

    QString applicationId_;
    QString languageId_;
    QString loadedLanguage_;
    QString text_;
    QStringList codeStrings_;
    QStringList menuLines_;
    // Name before the first "=" -> the first code string of that name.
    QHash<QString, qsizetype> index_;
    bool shelter_ = false;
    // The variables being resolved, innermost last: a name met twice is a cycle.
    mutable QStringList resolving_;
};

// One leading and one trailing double quote removed, each on its own.
QString StripQuotes(const QString& text);
// The shelter forms ||str_ and ||strLoc_ErrorString keep those values open while resolving.
void ShelterSharedValues(QString& text);
void UnshelterSharedValues(QString& text);

}  // namespace localisation
