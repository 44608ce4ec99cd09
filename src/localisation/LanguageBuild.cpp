#include "localisation/LanguageBuild.h"

#include "core/AnsiText.h"
#include "localisation/LanguageAssembler.h"

namespace localisation {

std::map<std::string, std::string> BuildLanguageFiles(platform::Platform& platform,
                                                      const QString& parentFolder,
                                                      const QString& applicationId,
                                                      const QString& languageId,
                                                      QString& errorText) {
    struct State {
        const char* extension;
        bool resolve;
        bool encryption;
    };
    // The scrambled build deletes the plain file beside it, so it comes last.
    constexpr State states[] = {{"ini", false, false}, {"inr", true, false}, {"inx", true, true}};

    std::map<std::string, std::string> files;
    for (const State& state : states) {
        LanguageOptions options;
        options.applicationId = applicationId;
        options.parentFolder = parentFolder;
        options.production = false;
        options.resolve = state.resolve;
        options.encryption = state.encryption;
        LanguageText language(applicationId);
        language.setLanguageId(languageId);
        LanguageAssembler assembler(platform, language, options);
        if (!assembler.AssembleLanguageFile(errorText)) {
            return {};
        }
        const auto bytes =
            platform.files.readFile(core::toAnsi(platform.codePage, assembler.targetFile()));
        if (!bytes) {
            errorText = assembler.targetFile() + QStringLiteral(" was not written");
            return {};
        }
        files[state.extension] = *bytes;
    }
    errorText.clear();
    return files;
}

}  // namespace localisation
