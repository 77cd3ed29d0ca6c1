// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <string>
#include <tuple>

#include "module/RegistryScript.h"
#include "tests/support/Code.h"

namespace larynth {

namespace {

// Quotes, percent signs, braces and words of the format: a path as nasty as the system allows.
constexpr char kNastyPath[] = "/opt/it's 100%/NoRemove } = s ''%MODULE%/m.so";

std::string Shown(const ScriptKey& key) {
    constexpr const char* kFlags[] = {"", "NoRemove ", "ForceRemove ", "Delete "};
    std::string text = kFlags[static_cast<int>(key.flag)] + ("<" + key.name + ">");
    if (key.defaultValue) text += "=<" + *key.defaultValue + ">";
    for (const ScriptValue& value : key.values) text += " val<" + value.name + ">=<" + value.text + ">";
    for (const ScriptKey& subkey : key.subkeys) text += " [" + Shown(subkey) + "]";
    return text;
}

}  // namespace

TEST(RegistryScript, BecomesATreeOfKeys) {
    const struct {
        const char *script, *tree;
    } rows[] = {
        {"hkcu { } HKLM { } HKU{}HKPD{}HKDD{}HKCC{} Hkey_Local_Machine{}",
         "NoRemove <HKEY_CURRENT_USER>;NoRemove <HKEY_LOCAL_MACHINE>;NoRemove <HKEY_USERS>;"
         "NoRemove <HKEY_PERFORMANCE_DATA>;NoRemove <HKEY_DYN_DATA>;NoRemove <HKEY_CURRENT_CONFIG>;"
         "NoRemove <HKEY_LOCAL_MACHINE>;"},
        {"HKCR { Larynth.Larynth.1 = s 'Larynth Class' { CLSID = s '{7856}' } Empty }",
         "NoRemove <HKEY_CLASSES_ROOT> [<Larynth.Larynth.1>=<Larynth Class> [<CLSID>=<{7856}>]] [<Empty>];"},
        {"HKCR{NoRemove A{ForceRemove B=s''}delete C{val D=S'x'val E = s 'y'}}",
         "NoRemove <HKEY_CLASSES_ROOT> [NoRemove <A> [ForceRemove <B>=<>]]"
         " [Delete <C> val<D>=<x> val<E>=<y>];"},
        {"HKCR{ForceRemove {7856881E-0461-4F9D-8693-3030B63798FA}=s'a'{B}"
         " {00000000-0000-0000-c000-000000000046}}",
         "NoRemove <HKEY_CLASSES_ROOT> [ForceRemove <{7856881E-0461-4F9D-8693-3030B63798FA}>=<a> [<B>]]"
         " [<{00000000-0000-0000-c000-000000000046}>];"},
        {"HKCR{A=s'it''s {=} ''''' val V=s'''' NoRemove Delete}",
         "NoRemove <HKEY_CLASSES_ROOT> val<V>=<'> [<A>=<it's {=} ''>] [NoRemove <Delete>];"},
        {"HKCR{Paths=s'<%MODULE%> 100%% %module%%%'}",
         "NoRemove <HKEY_CLASSES_ROOT> [<Paths>=<</opt/it's 100%/NoRemove } = s ''%MODULE%/m.so> 100%"
         " /opt/it's 100%/NoRemove } = s ''%MODULE%/m.so%>];"},
    };
    for (const auto& row : rows) {
        std::string tree;
        for (const auto& root : ParseRegistryScript(row.script, kNastyPath)) tree += Shown(root) + ";";
        EXPECT_EQ(tree, row.tree) << row.script;
    }
}

TEST(RegistryScript, AMalformedOneIsRefusedWithThePlaceAndWhatWasExpected) {
    std::string deep = "HKCR {";
    for (int level = 0; level < 100'000; ++level) deep += "A{";
    const struct {
        const char* script;
        int line, column;
        const char* expected;
    } rows[] = {
        {"HKCR {}\n  }", 2, 3, "a root key such as HKCR"},
        {"HKCR\n\tA {}", 2, 2, "\"{\" after the root key"},
        {"HKCR {\n A {\n}\n", 4, 1, "a key, a value or \"}\""},
        {"HKCR {\r\n  NoRemove A\\ }", 2, 12, "a key name without backslash"},
        {"HKCR { A = d '1' }", 1, 12, "the type letter s"},
        {"HKCR { A = s 'a''\n' }", 1, 14, "a closing quote on the same line"},
        {"HKCR { ForceRemove {7856881E-0461-4F9D-8693-3030B63798FG} }", 1, 20,
         "a class identifier in braces"},
        {"HKCR { A = s 'see %WINDIR%' }", 1, 19, "the variable MODULE"},
        {deep.c_str(), 1, 207, "at most 100 levels of keys"},
    };
    for (const auto& row : rows) {
        try {
            ParseRegistryScript(row.script, kNastyPath);
            ADD_FAILURE() << row.script << " was accepted";
        } catch (const ScriptError& error) {
            const std::tuple found(error.Where().line, error.Where().column, std::string(error.Expected()));
            EXPECT_EQ(found, std::tuple(row.line, row.column, row.expected)) << row.script;
            EXPECT_EQ(Code(error.Code()), "DISP_E_EXCEPTION");
        }
    }
}

TEST(RegistryScript, IsRefusedWhereAPathWouldBecomeKeys) {
    EXPECT_NO_THROW(ParseRegistryScript("HKCR { A = s '%MODULE%' }", "/opt/a\\b.so"));
    EXPECT_THROW(ParseRegistryScript("HKCR { %MODULE% }", "/opt/a\\b.so"), ScriptError);
}

}  // namespace larynth
