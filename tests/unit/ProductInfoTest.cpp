// Release number, support information, help and the factory flag. Failing neighbours: FaultTest.cpp.
#include <gtest/gtest.h>

#include <tuple>

#include "FakeProduct.h"
#include "ProductConstants.h"
#include "productinfo/FactoryFlag.h"
#include "productinfo/ReleaseNumber.h"
#include "productinfo/SupportInfo.h"

namespace v5 {
namespace {

const std::wstring kPath = L"D:\\Vantor\\Help\\VantorManual.chm";

std::wstring NotFound(std::wstring_view upgradeCode, const wchar_t* tag = L"STR-0146") {
    return tag + std::wstring(L": Cannot find installed product code for upgrade code '") + std::wstring(upgradeCode) +
           L"'\n";
}

TEST(SupportInfo, WhatIsInstalledAndWhatIsNot) {
    FakeProduct product;
    product.packages[std::wstring(product::kUpgradeCodeMain)] = {L"Vantor 5.3.12"};
    const auto texts = [&] {
        const SupportInfo info = ReadSupportInfo(product, product, &product);
        std::wstring all;
        for (const SupportPackage* package : {&info.supportFiles, &info.main, &info.web, &info.ostra}) {
            all += package->release + L", " + package->installed + L"\n";
        }
        return all + std::wstring(info.company) + L" " + std::wstring(info.phone) +
               (info.emailIsLink ? L", link " : L", text ") + std::wstring(info.email);
    };
    const std::wstring contact = std::wstring(product::kCompanyName) + L" " + std::wstring(product::kSupportPhone) +
                                 L", text " + std::wstring(product::kSupportEmail);
    EXPECT_EQ(texts(), L", \nVantor 5.3.12, Installed 2014-03-05\n, \n, \n" + contact);
    EXPECT_EQ(product.told, NotFound(product::kUpgradeCodeSupportFiles) + NotFound(product::kUpgradeCodeSupportFiles) +
                                NotFound(product::kUpgradeCodeWeb) + NotFound(product::kUpgradeCodeWeb) +
                                NotFound(product::kUpgradeCodeOstra) + NotFound(product::kUpgradeCodeOstraOlder) +
                                NotFound(product::kUpgradeCodeOstraOlder));
    product.packages[std::wstring(product::kUpgradeCodeOstraOlder)] = {L"Ostra 1.9", L"20090101"};
    EXPECT_EQ(texts(), L", \nVantor 5.3.12, Installed 2014-03-05\n, \nOstra 1.9, Installed 2009-01-01\n" + contact);
    product.packages[std::wstring(product::kUpgradeCodeOstra)] = {L"Ostra 2.0", L"no date"};
    EXPECT_EQ(texts(), L", \nVantor 5.3.12, Installed 2014-03-05\n, \nOstra 2.0, \n" + contact);
    product.told.clear();
    product.machine.failing = "RelatedProduct";
    EXPECT_EQ(texts(), L"Common Files, \nVantor, \n, \n, \n" + contact);
    EXPECT_EQ(product.told, L"");

    auto& command = product.values[{RegistryRoot::ClassesRoot, L"mailto\\shell\\open\\command", L""}];
    EXPECT_FALSE(ReadSupportInfo(product, product, nullptr).emailIsLink);
    command = L"mail.exe %1";
    EXPECT_TRUE(ReadSupportInfo(product, product, nullptr).emailIsLink);
    EXPECT_EQ(SupportMailAddress(L"support@nimbo.example", L"Vantor 5.3.12"),
              L"mailto:support@nimbo.example?subject=support%20request%20(Vantor%205%2E3%2E12)");
}

TEST(SupportInfo, DisplayDate) {
    for (wchar_t separator = L' '; separator < 0x250; ++separator) {
        const std::wstring date = {L'3', L'1', separator, L'1', L'2', separator, L'2', L'0', L'1', L'4'};
        const bool isSeparator = std::wstring_view(L"-/.").find(separator) != std::wstring_view::npos;
        EXPECT_EQ(DisplayDate(date), isSeparator ? date : L"");
    }
    EXPECT_EQ(DisplayDate(L"20140305"), L"2014-03-05");
    EXPECT_EQ(DisplayDate(L"20120229"), L"2012-02-29");
    EXPECT_EQ(DisplayDate(L"99991231") + DisplayDate(L"1/1/0100"), L"9999-12-311/1/0100");
    for (const wchar_t* none : {L"20130229", L"20141305", L"1", L"-20140305", L"140305", L"120140305", L"1e300",
                                L"31.12/2014", L"99999-1-1", L"02014-3-5", L"", L"today", L"2014-03-05-06"}) {
        EXPECT_EQ(DisplayDate(none), L"") << testing::PrintToString(none);
    }
}

TEST(FactoryFlag, ExactlyOneForTheMachineOrTheUser) {
    const std::optional<std::wstring> texts[] = {{}, L"", L"1", L"0", L"01", L" 1", L"true"};
    for (const auto& machine : texts) {
        for (const auto& user : texts) {
            FakeProduct product;
            for (const auto& [root, text] :
                 {std::pair(RegistryRoot::LocalMachine, machine), {RegistryRoot::CurrentUser, user}}) {
                if (text) {
                    product.values[{root, L"Software\\Nimbo", L"Factory"}] = *text;
                }
            }
            EXPECT_EQ(IsFactoryComputer(product), machine == L"1" || user == L"1");
        }
    }
}

TEST(HelpLauncher, ExplainsWhatIsMissingToTheUserAndToTheSink) {
    const std::wstring notInstalled =
        L"Cannot find path for Vantor help file 'VantorManual.chm'. Vantor help may not be installed. [STR-0168]";
    const std::wstring noComponent =
        L"Cannot find component path for Vantor help file. Vantor help may not be installed. [STR-0167]\n";
    FakeProduct product;
    const auto help = [&] {
        product.told.clear();
        EXPECT_EQ(OpenHelp(product, product, nullptr), OpenHelp(product, product, &product));
        return OpenHelp(product, product, nullptr) + L" / " + product.told;
    };
    EXPECT_EQ(help(), notInstalled + L" / " + NotFound(product::kUpgradeCodeMain, L"STR-0165") + noComponent);
    auto& package = product.packages[std::wstring(product::kUpgradeCodeMain)];
    EXPECT_EQ(help(), notInstalled + L" / " + noComponent);
    package.componentPath = kPath;
    EXPECT_EQ(help(), L"Cannot find file '" + kPath + L"'. [STR-0170] / Cannot find '" + kPath +
                          L"'. Vantor help may not be installed. [STR-0169]\n");
    product.files.insert(kPath);
    for (const char* failing : {"RelatedProduct", "ComponentPath", "Open"}) {
        product.machine.failing = failing;
        EXPECT_EQ(help(), L"[STR-0171] -2147467259, it broke / ") << failing;
    }
    EXPECT_EQ(product.opened, L"");
    product.machine.failing.clear();
    EXPECT_EQ(help(), L" / ");
    EXPECT_EQ(product.opened, kPath);
}

TEST(ReleaseNumber, TextByKindAndInstalledName) {
    constexpr auto kUnassigned = static_cast<ReleaseKind>(3);
    const std::tuple<ReleaseKind, const wchar_t*, const wchar_t*> cases[] = {
        {ReleaseKind::Full, L"Vantor 5.3.12", L"Release 5.3.12"},
        {ReleaseKind::Short, L"Vantor 5.3.12", L"Release 5.3"},
        {ReleaseKind::FullNoPrefix, L"Vantor 5.3.12", L"5.3.12"},
        {ReleaseKind::Short, L"Vantor5", L"Release 5"},
        {ReleaseKind::Short, L"Vantor 5.3 SP1.", L"Release 5.3 SP1"},
        {ReleaseKind::Full, L"Vantor\u0665 beta", L"Release Release ??"},  // an Arabic digit is none
        {ReleaseKind::Short, L"Vantor.beta", L"Release Release ??"},
        {ReleaseKind::FullNoPrefix, L"Vantor", L"??"},
        {ReleaseKind::SupportFiles, L"Common Files S12", L"Common Files S12"},
        {ReleaseKind::Web, L"VantorWeb 2.1", L"VantorWeb ??"},
        {kUnassigned, L"Vantor 5.3.12", L""},
        {static_cast<ReleaseKind>(-1), L"Vantor 5.3.12", L""}};
    for (const auto& [kind, name, expected] : cases) {
        FakeProduct product;
        const std::wstring code(kind == ReleaseKind::SupportFiles ? product::kUpgradeCodeSupportFiles
                                : kind == ReleaseKind::Web        ? product::kUpgradeCodeWeb
                                                                  : product::kUpgradeCodeMain);
        EXPECT_EQ(ReleaseNumber(product, &product, kind), L"");
        EXPECT_EQ(std::exchange(product.told, {}), *expected != 0 ? NotFound(code) : L"");
        product.packages[code] = {name};
        EXPECT_EQ(ReleaseNumber(product, &product, kind), expected) << static_cast<int>(kind);
        product.machine.failing = "ProductInfo";  // listed, but without a name
        EXPECT_EQ(ReleaseNumber(product, &product, kind), L"");
        EXPECT_EQ(product.told, L"");
    }
}

}  // namespace
}  // namespace v5
