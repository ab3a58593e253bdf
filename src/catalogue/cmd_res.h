// One host command resource file ("procmd*.res"): the command's host name, label, help text,
// description, bitmap and whether it is a check button. The file is scanned by a tolerant
// tokenizer that knows five keywords and counts parentheses; everything else is skipped.
#pragma once

#include <memory>
#include <string>
#include <vector>

class CQvxProCmdRes {
public:
    CQvxProCmdRes();
    virtual ~CQvxProCmdRes();
    CQvxProCmdRes(const CQvxProCmdRes&) = delete;
    CQvxProCmdRes& operator=(const CQvxProCmdRes&) = delete;

    /// Opens and parses the file (`path` in the system code page); 0 when a file is open
    /// already or it cannot be read. LANG set and non-empty: labels, help texts and
    /// descriptions are translated through the directory's language file.
    int Open(const std::string& path);
    /// Opens and parses the file without any language file: labels, help texts and
    /// descriptions stand for themselves until Translate. For a scan of many files that
    /// share one language file.
    int OpenUntranslated(const std::string& path);
    int Close();

    std::string GetActivateCommand() const;
    std::string GetLabel() const;
    std::string GetHelpText() const;
    std::string GetDescription() const;
    std::string GetBitmap() const;
    int IsCheckButton() const;

    /// Parses a file's text; `languageFile` may be null (keys stand for themselves).
    void ParseText(std::string text, const class CQvxProCmdLangFile* languageFile);
    /// The values as the file gives them that the language file translates.
    std::vector<std::string> TranslatableValues() const;
    /// Makes label, help text and description from the file's values through `languageFile`
    /// (null: the values stand for themselves), exactly as a parse with that file would.
    void Translate(const class CQvxProCmdLangFile* languageFile);

private:
    /// The tokenizing scan from "(Resources" on; consumes `text`.
    void Scan(std::string& text);

    class CQvxProCmdResPrivate;
    std::unique_ptr<CQvxProCmdResPrivate> m_private;
};
