// EnvVariables_test.cpp: `$(...)` replacement, the environment and the file variables.
#include "orv/EnvVariables.h"

#include <QtCore/QThread>

#include <gtest/gtest.h>

using namespace orv;

namespace {

void unsetEnv(char const *name) { qunsetenv(name); }

class EnvVariablesTest : public ::testing::Test {
protected:
    void SetUp() override {
        setEnv("ORV_T_VALUE", "va\"lu\"e");
        setEnv("ORV_T_EMPTY", "");
        unsetEnv("ORV_T_UNSET");
    }
    void TearDown() override {
        unsetEnv("ORV_T_VALUE");
        unsetEnv("ORV_T_EMPTY");
    }
};

} // namespace

TEST_F(EnvVariablesTest, GetEnvDropsQuotesAndTellsUnsetFromEmpty) {
    EXPECT_EQ(getEnv("ORV_T_VALUE"), QLatin1String("value"));
    EXPECT_EQ(getEnv("ORV_T_UNSET"), QString());
    EXPECT_TRUE(hasEnv("ORV_T_EMPTY"));
    EXPECT_FALSE(hasEnv("ORV_T_UNSET"));
    EXPECT_EQ(getEnv("orv_t_value"), QString()); // names are case-sensitive
}

TEST_F(EnvVariablesTest, IsEnvAcceptsFourSpellingsOfTrue) {
    struct Row {
        char const *value;
        bool expected;
    } const rows[] = {{"true", true},  {"1", true},   {"TRUE", true}, {"True", true},
                      {"tRUE", false}, {"on", false}, {"0", false},   {"", false}};
    for (Row const &r : rows) {
        setEnv("ORV_T_FLAG", r.value);
        EXPECT_EQ(isEnv("ORV_T_FLAG"), r.expected) << r.value;
    }
    unsetEnv("ORV_T_FLAG");
    EXPECT_FALSE(isEnv("ORV_T_FLAG"));
}

TEST_F(EnvVariablesTest, ReplaceEnvTable) {
    struct Row {
        char const *in, *out;
    } const rows[] = {
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
    for (Row const &r : rows)
        EXPECT_EQ(replaceEnv(QLatin1String(r.in)), QLatin1String(r.out)) << r.in;
}

TEST(Replacer, FileVariablesComeFromTheFile) {
    Replacer r(QFileInfo("C:/x/y.txt"));
    EXPECT_EQ(r.replace("$(G_FILE)"), QLatin1String("y.txt"));
    EXPECT_EQ(r.replace("$(G_BASE)"), QLatin1String("y"));
    EXPECT_EQ(r.replace("$(G_SUFFIX)"), QLatin1String("txt"));
    EXPECT_EQ(r.replace("$(UNKNOWN_KEY)"), QLatin1String("$(UNKNOWN_KEY)"));
    EXPECT_EQ(r.replace(" $(G_FILE)"), QLatin1String(" $(G_FILE)"));
    Replacer abs(QFileInfo("/tmp/d/f.tar.gz"));
    EXPECT_EQ(abs.replace("$(G_PATH)|$(G_DIR)"), QLatin1String("/tmp/d/f.tar.gz|/tmp/d"));
}

TEST(Replacer, FilePartsOverrideTheUserMappingWhenAFileIsSet) {
    auto upper = [](QString const &key) { return key == "K" ? QString("mapped") : QString(); };
    Replacer noFile;
    noFile.mapping = upper;
    EXPECT_EQ(noFile.replace("$(K)"), QLatin1String("mapped"));
    Replacer withFile(QFileInfo("/tmp/a.txt"));
    withFile.mapping = upper;
    EXPECT_EQ(withFile.replace("$(K)"), QLatin1String("$(K)"));
}

TEST(Replacer, OverriddenKeyMappingComesBeforeTheEnvironment) {
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
    struct Row {
        char const *in, *out;
    } const rows[] = {{"x$(a)y", "xAy"},   {"$(b)", "$(b)"}, {"[$(#note)]", "[]"},
                      {"$(a(b)", "$(ab)"}, {"a$b", "a$b"},   {"x$(a", "x"},
                      {"$a(b)", "$a(b)"}};
    for (Row const &r : rows)
        EXPECT_EQ(replace_variables(QLatin1String(r.in), f), QLatin1String(r.out)) << r.in;
    EXPECT_EQ(replace_variables(QString(), f), QString());
    EXPECT_EQ(replace_variables("$(a)", nullptr), QLatin1String("$(a)"));
}

TEST(EnvVariables, FileInfoToEnvSetsTheFiveVariables) {
    fileInfo_to_env(QFileInfo("/tmp/dir/file.tar.gz"));
    EXPECT_EQ(getEnv("G_PATH"), QLatin1String("/tmp/dir/file.tar.gz"));
    EXPECT_EQ(getEnv("G_DIR"), QLatin1String("/tmp/dir"));
    EXPECT_EQ(getEnv("G_FILE"), QLatin1String("file.tar.gz"));
    EXPECT_EQ(getEnv("G_SUFFIX"), QLatin1String("gz"));
    EXPECT_EQ(getEnv("G_BASE"), QLatin1String("file"));
    EXPECT_EQ(replaceEnv("$(G_BASE).bak"), QLatin1String("file.bak"));
}

TEST(EnvVariables, RunningInsideVmFollowsOrvvm) {
    struct Row {
        char const *value;
        bool inside;
    } const rows[] = {{"1", true}, {"\"ON\"", true}, {"True", true}, {"0", false}, {"", false}};
    for (Row const &r : rows) {
        setEnv("ORVVM", r.value);
        EXPECT_EQ(is_running_inside_VM(), r.inside) << r.value;
    }
    qunsetenv("ORVVM");
    EXPECT_FALSE(is_running_inside_VM());
}

TEST(EnvVariables, CountHardwareThreadsCapsAtTheMachine) {
    unsigned int const cpu = static_cast<unsigned int>(QThread::idealThreadCount());
    EXPECT_EQ(count_hardware_threads(0), 1u);
    EXPECT_EQ(count_hardware_threads(1), 1u);
    EXPECT_EQ(count_hardware_threads(cpu), cpu);
    EXPECT_EQ(count_hardware_threads(cpu + 100), cpu);
}
