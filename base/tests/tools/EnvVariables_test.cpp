// EnvVariables_test.cpp: `$(...)` replacement, the environment and the file variables.
#include "orv/EnvVariables.h"

#include "support/Test.h"

#include <QtCore/QThread>

using namespace orv;

TEST(EnvVariables, GetEnvDropsQuotesAndIsEnvAcceptsFourSpellingsOfTrue) {
    setEnv("ORV_T_VALUE", "va\"lu\"e");
    setEnv("ORV_T_EMPTY", "");
    qunsetenv("ORV_T_UNSET");
    EXPECT_EQ(getEnv("ORV_T_VALUE"), QLatin1String("value"));
    EXPECT_EQ(getEnv("ORV_T_UNSET"), QString());
    EXPECT_TRUE(hasEnv("ORV_T_EMPTY"));
    EXPECT_FALSE(hasEnv("ORV_T_UNSET"));
    EXPECT_EQ(getEnv("orv_t_value"), QString()); // names are case-sensitive
    qunsetenv("ORV_T_VALUE");
    qunsetenv("ORV_T_EMPTY");
    // ORVVM, the virtual-machine flag, also takes "ON" and drops quotes.
    std::tuple<char const *, char const *, bool> const rows[] = {
        // clang-format off
        {"ORV_T_FLAG", "true", true}, {"ORV_T_FLAG", "1", true}, {"ORV_T_FLAG", "TRUE", true},
        {"ORV_T_FLAG", "True", true}, {"ORV_T_FLAG", "tRUE", false}, {"ORV_T_FLAG", "on", false},
        {"ORV_T_FLAG", "0", false}, {"ORV_T_FLAG", "", false}, {"ORVVM", "1", true},
        {"ORVVM", "ON", true}, {"ORVVM", "\"ON\"", true}, {"ORVVM", "True", true},
        {"ORVVM", "\"true\"", true}, {"ORVVM", "yes", false}, {"ORVVM", "0", false}, {"ORVVM", "", false},
    }; // clang-format on
    QByteArray const savedVm = qgetenv("ORVVM");
    for (auto [name, value, expected] : rows) {
        setEnv(name, value);
        EXPECT_EQ(QLatin1String(name) == "ORVVM" ? is_running_inside_VM() : isEnv(name), expected)
            << name << "=" << value;
    }
    qunsetenv("ORV_T_FLAG");
    EXPECT_FALSE(isEnv("ORV_T_FLAG"));
    qunsetenv("ORVVM");
    EXPECT_FALSE(is_running_inside_VM());
    qputenv("ORVVM", savedVm);
}

TEST(EnvVariables, ReplaceEnvTakesSetVariablesWithoutQuotes) {
    setEnv("ORV_T_VALUE", "va\"lu\"e");
    setEnv("ORV_T_EMPTY", "");
    std::pair<char const *, char const *> const rows[] = {
        {"$(ORV_T_VALUE)/x", "value/x"},
        {"a$(ORV_T_VALUE)$(ORV_T_VALUE)", "avaluevalue"},
        {"$(ORV_T_UNSET)/x", "$(ORV_T_UNSET)/x"}, // unknown stays
        {"$(ORV_T_EMPTY)", "$(ORV_T_EMPTY)"},     // empty stays
        {" $(ORV_T_VALUE)", " $(ORV_T_VALUE)"},   // leading blank: untouched
        {"\t$(ORV_T_VALUE)", "\t$(ORV_T_VALUE)"},
        {"a$b", "ab"},           // `$` without `(` is lost
        {"x$(ORV_T_VALUE", "x"}, // unclosed key is dropped
        {"x$", "x"},
        {"", ""},
    };
    for (auto [in, out] : rows)
        EXPECT_EQ(replaceEnv(QLatin1String(in)), QLatin1String(out)) << in;
    qunsetenv("ORV_T_VALUE");
    qunsetenv("ORV_T_EMPTY");
    fileInfo_to_env(QFileInfo("/tmp/dir/file.tar.gz"));
    EXPECT_EQ(replaceEnv("$(G_PATH)|$(G_DIR)|$(G_FILE)|$(G_SUFFIX)|$(G_BASE).bak"),
              QLatin1String("/tmp/dir/file.tar.gz|/tmp/dir|file.tar.gz|gz|file.bak"));
}

TEST(Replacer, FileVariablesComeFromTheFileAndOverrideTheUserMapping) {
    Replacer r(QFileInfo("C:/x/y.txt"));
    EXPECT_EQ(r.replace("$(G_FILE)|$(G_BASE)|$(G_SUFFIX)"), QLatin1String("y.txt|y|txt"));
    EXPECT_EQ(r.replace("$(UNKNOWN_KEY)"), QLatin1String("$(UNKNOWN_KEY)"));
    EXPECT_EQ(r.replace(" $(G_FILE)"), QLatin1String(" $(G_FILE)"));
    Replacer abs(QFileInfo("/tmp/d/f.tar.gz"));
    EXPECT_EQ(abs.replace("$(G_PATH)|$(G_DIR)"), QLatin1String("/tmp/d/f.tar.gz|/tmp/d"));
    auto upper = [](QString const &key) { return key == "K" ? QString("mapped") : QString(); };
    Replacer noFile;
    noFile.mapping = upper;
    EXPECT_EQ(noFile.replace("$(K)"), QLatin1String("mapped"));
    abs.mapping = upper;
    EXPECT_EQ(abs.replace("$(K)"), QLatin1String("$(K)"));
    // An overridden key mapping comes before the environment.
    struct Fixed : Replacer {
        QString map_key_to_val(QString const &key) override {
            return key == "HOME" ? QString("here") : QString();
        }
    } fixed;
    EXPECT_EQ(fixed.replace("$(HOME)"), QLatin1String("here"));
}

TEST(ReplaceVariables, KeepsUnknownKeysAndDropsHashKeys) {
    auto f = [](QString const &key) {
        return key == "a" ? QString("A") : key; // the key back means "unknown"
    };
    // clang-format off
    std::pair<char const *, char const *> const rows[] = {
        {"x$(a)y", "xAy"}, {"$(b)", "$(b)"}, {"[$(#note)]", "[]"}, {"$(a(b)", "$(ab)"},
        {"a$b", "a$b"}, {"x$(a", "x"}, {"$a(b)", "$a(b)"}};
    // clang-format on
    for (auto [in, out] : rows)
        EXPECT_EQ(replace_variables(QLatin1String(in), f), QLatin1String(out)) << in;
    EXPECT_EQ(replace_variables(QString(), f), QString());
    EXPECT_EQ(replace_variables("$(a)", nullptr), QLatin1String("$(a)"));
}

TEST(EnvVariables, CountHardwareThreadsCapsAtTheMachine) {
    unsigned int const cpu = static_cast<unsigned int>(QThread::idealThreadCount());
    EXPECT_EQ(count_hardware_threads(0), 1u);
    EXPECT_EQ(count_hardware_threads(1), 1u);
    EXPECT_EQ(count_hardware_threads(cpu), cpu);
    EXPECT_EQ(count_hardware_threads(cpu + 100), cpu);
}
