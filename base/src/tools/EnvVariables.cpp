// EnvVariables.cpp: variable replacement and the environment of the process.
#include "orv/EnvVariables.h"

#include "orv/Log.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QThread>

namespace orv {

namespace {

struct FileVariable {
    char const *key;
    QString (QFileInfo::*part)() const;
};

FileVariable const fileVariables[] = {{"G_PATH", &QFileInfo::absoluteFilePath},
                                      {"G_DIR", &QFileInfo::absolutePath},
                                      {"G_FILE", &QFileInfo::fileName},
                                      {"G_SUFFIX", &QFileInfo::suffix},
                                      {"G_BASE", &QFileInfo::baseName}};

QString variableText(QString const &key) { return QLatin1String("$(") + key + QLatin1Char(')'); }

} // namespace

Replacer::Replacer(QFileInfo const &fileInfo) : fileInfo(fileInfo) {}

QString Replacer::replace(QString const &s) {
    if (s.isEmpty())
        return QString();
    if (s.at(0).unicode() <= ' ')
        return s;
    enum class State { Text, Dollar, Key } state = State::Text;
    QString out, key;
    out.reserve(s.size());
    for (QChar const c : s) {
        switch (state) {
        case State::Text:
            if (c == QLatin1Char('$'))
                state = State::Dollar;
            else
                out.append(c);
            break;
        case State::Dollar:
            if (c == QLatin1Char('(')) {
                key.clear();
                state = State::Key;
            } else {
                out.append(c);
                state = State::Text;
            }
            break;
        case State::Key:
            if (c != QLatin1Char(')')) {
                key.append(c);
                break;
            }
            QString value;
            if (mapping)
                value = mapping(key);
            if (!fileInfo.filePath().isEmpty())
                value = map_fileParts_to_val(key);
            if (value.isEmpty())
                value = map_key_to_val(key);
            if (value.isEmpty())
                value = map_key_to_environment_variables(key);
            out.append(value.isEmpty() ? variableText(key) : value);
            state = State::Text;
            break;
        }
    }
    return out;
}

QString Replacer::map_fileParts_to_val(QString const &key) {
    for (FileVariable const &v : fileVariables)
        if (key == QLatin1String(v.key))
            return (fileInfo.*v.part)();
    return QString();
}

QString Replacer::map_key_to_val(QString const &) { return QString(); }

QString Replacer::map_key_to_environment_variables(QString const &key) { return getEnv(key); }

QString replace_variables(QString const &s, std::function<QString(QString const &)> f) {
    if (s.isEmpty()) {
        ppWarning("::replace_variables, str.isNull() || str.isEmpty()");
        return QString();
    }
    if (!f)
        return s;
    QString out, key;
    out.reserve(s.size());
    bool inKey = false;
    for (int i = 0; i < s.size(); ++i) {
        QChar const c = s.at(i);
        if (!inKey) {
            if (c == QLatin1Char('$') && i + 1 < s.size() && s.at(i + 1) == QLatin1Char('(')) {
                inKey = true;
                key.clear();
                ++i;
            } else {
                out.append(c);
            }
        } else if (c == QLatin1Char(')')) {
            inKey = false;
            QString const value = f(key);
            if (value != key) {
                out.append(value);
            } else {
                ppDebug("str::replace_variables - SAME");
                if (!key.startsWith(QLatin1Char('#')))
                    out.append(variableText(key));
            }
        } else if (c != QLatin1Char('(')) {
            key.append(c);
        }
    }
    return out;
}

QString replaceEnv(QString const &s) { return Replacer().replace(s); }

QString getEnv(QString const &name) {
    QByteArray value = platform::getEnv(name.toLocal8Bit().constData());
    return QString::fromLocal8Bit(value.replace('"', QByteArray()));
}

bool hasEnv(QString const &name) {
    return !platform::getEnv(name.toLocal8Bit().constData()).isNull();
}

bool isEnv(QString const &name) {
    QString const value = getEnv(name);
    return value == QLatin1String("true") || value == QLatin1String("1") ||
           value == QLatin1String("TRUE") || value == QLatin1String("True");
}

void setEnv(QString const &name, QString const &value) {
    platform::setEnv(name.toLocal8Bit().constData(), value.toLocal8Bit());
}

void fileInfo_to_env(QFileInfo const &fileInfo) {
    for (FileVariable const &v : fileVariables)
        setEnv(QLatin1String(v.key), (fileInfo.*v.part)());
}

void fileInfo_env_show(unsigned int indent) {
    for (FileVariable const &v : fileVariables)
        ppInfo(indent, QLatin1String(v.key) + QLatin1String(":'") + getEnv(QLatin1String(v.key)) +
                           QLatin1Char('\''));
}

void showVariables(std::map<QString, QString> const &variables, unsigned int indent) {
    ppInfo(indent, "map:$ elements", variables.size());
    for (auto const &entry : variables)
        ppInfo(indent, "$: '$'", entry.first, entry.second);
}

bool is_running_inside_VM() {
    QString const value = getEnv(QStringLiteral("ORVVM")).toLower();
    return value == QLatin1String("1") || value == QLatin1String("true") ||
           value == QLatin1String("on");
}

unsigned int count_hardware_threads(unsigned int wanted) {
    unsigned int const cpuThreads = static_cast<unsigned int>(qMax(1, QThread::idealThreadCount()));
    if (wanted > cpuThreads) {
        ppWarning("Tools.h, str::count_hardware_threads, wanted_threads > cpu_threads, $ > $, "
                  "set to:$",
                  wanted, cpuThreads, cpuThreads);
        return cpuThreads;
    }
    return wanted == 0 ? 1 : wanted;
}

} // namespace orv
