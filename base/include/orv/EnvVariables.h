// EnvVariables.h: `$(NAME)` variables in texts, the process environment, and the
// five file variables G_PATH, G_DIR, G_FILE, G_SUFFIX, G_BASE.
//
//   orv::replaceEnv("$(HOME)/data");                  // "/home/me/data"
//   orv::Replacer r(QFileInfo("/x/y.txt"));
//   r.replace("$(G_BASE).bak");                       // "y.bak"
//
// Names are case-sensitive. setEnv and fileInfo_to_env change the whole process.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <functional>
#include <map>

namespace orv {

// Replaces `$(key)` by the user mapping, the file variables, map_key_to_val and
// the environment, in that order; a key none of them knows stays `$(key)`.
// A `$` not followed by `(` is dropped; an unclosed `$(key` is dropped whole.
// A text that starts with a blank or a control character is returned untouched.
class ORV_EXPORT Replacer {
public:
    Replacer() = default;
    explicit Replacer(QFileInfo const &fileInfo);
    virtual ~Replacer() = default;

    QString replace(QString const &s);

    std::function<QString(QString const &)> mapping;
    QFileInfo fileInfo;

    // The file variable `key` of fileInfo; empty for other keys.
    virtual QString map_fileParts_to_val(QString const &key);
    // Empty here; exists for overriding.
    virtual QString map_key_to_val(QString const &key);
    virtual QString map_key_to_environment_variables(QString const &key);
};

// One pass of `$(key)` -> f(key); `(` inside a key is dropped. When f gives the key
// back, `$(key)` stays, except for keys starting with "#", which vanish.
// An empty s logs a WARN and gives ""; an empty f gives s.
ORV_EXPORT QString replace_variables(QString const &s, std::function<QString(QString const &)> f);
// `$(NAME)` -> the environment variable; missing or empty ones stay as written.
ORV_EXPORT QString replaceEnv(QString const &s);

// The value with every `"` removed; empty when unset.
ORV_EXPORT QString getEnv(QString const &name);
ORV_EXPORT bool hasEnv(QString const &name);
// The value is "true", "1", "TRUE" or "True".
ORV_EXPORT bool isEnv(QString const &name);
ORV_EXPORT void setEnv(QString const &name, QString const &value);

ORV_EXPORT void fileInfo_to_env(QFileInfo const &fileInfo);
ORV_EXPORT void fileInfo_env_show(unsigned int indent);
ORV_EXPORT void showVariables(std::map<QString, QString> const &variables, unsigned int indent = 0);

// ORVVM is "1", "true" or "on", in any case and with quotes removed.
ORV_EXPORT bool is_running_inside_VM();
// wanted, capped at the hardware's thread count (logged); 0 gives 1.
ORV_EXPORT unsigned int count_hardware_threads(unsigned int wanted);

} // namespace orv
