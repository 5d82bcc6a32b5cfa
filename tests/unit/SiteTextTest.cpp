// What v5site says of a site file beyond what the library says.
#include "v5site/SiteText.h"

#include <gtest/gtest.h>

#include "unit/FakeSiteHost.h"
#include "v5site/SiteDiff.h"

namespace v5site {

namespace {

struct SiteOf : v5::SiteBench {
    explicit SiteOf(const std::string& file) : SiteBench(file) { Read(); }
};

}  // namespace

TEST(SiteText, RemarksOnWhatProgramsPassOver) {
    const std::pair<std::string, const wchar_t*> cases[] = {
        {"SitID=AB\n", L"2 Dahs1 SitID there is no such key (did you mean 'SiteID'?)\n"},
        {"TraceEnabeld=no\n", L"2 Dahs1 TraceEnabeld there is no such key (did you mean 'TraceEnabled'?)\n"},
        {"Colour=blue\n", L"2 Dahs1 Colour there is no such key\n"},
        {"HDR=off\n", L"2 Dahs1 HDR 'off' is neither YES nor NO, and counts as YES (did you mean 'NO'?)\n"},
        {"RedundantDasSyncMergeEnabled=fales\n",
         L"2 Dahs1 RedundantDasSyncMergeEnabled 'fales' is neither YES nor NO, and counts as NO (did you mean "
         L"'FALSE'?)\n"},
        {"just text\n", L"2 Dahs1  this line has no '=', and programs ignore it\n"},
        {"HDR=1\nhdr=0\n", L"3 Dahs1 hdr programs take the first line of this key, line 2\n"},
        {"; a comment\n\n HDR = no \nLogFlushEnabled=FASLE\n", L""}};
    for (const auto& [lines, remarks] : cases) {
        const std::string file = v5::Section(1, lines);
        std::wstring told;
        for (const Remark& remark : SiteText({file.begin(), file.end()}).Remarks()) {
            told +=
                std::to_wstring(remark.line) + L" " + remark.section + L" " + remark.key + L" " + remark.text + L"\n";
        }
        EXPECT_EQ(told, remarks) << lines;
    }
}

TEST(SiteText, RemarksOnSections) {
    const SiteText text(
        L"HDR=1\r[Dahs "
        L"2]\r[Dahs100]\r[dash3]\r[Printer]\rnoise\r[AfinityMasks]\r[AffinityMasks]\rIOS=zz\rDM=0x3\rDBQ=1\r"
        L"[Dahs7] ; main\rSiteID=\r[ DAHS7 ]\rSiteID=X\r[Dahs8\r");
    std::wstring remarks;
    for (const Remark& remark : text.Remarks()) {
        remarks += std::to_wstring(remark.line) + L" " + remark.text + L"\n";
    }
    EXPECT_EQ(remarks,
              L"1 this line stands before the first section, and programs ignore it\n"
              L"2 programs do not look at this section (did you mean '[Dahs2]'?)\n"
              L"3 programs do not look at this section: DAHSes have the numbers 1 to 99\n"
              L"4 programs do not look at this section (did you mean '[Dahs3]'?)\n"
              L"7 programs do not look at this section (did you mean '[AffinityMasks]'?)\n"
              L"9 'zz' is no number, and counts as 0: any processor\n"
              L"11 there is no such key (did you mean 'DBE'?)\n"
              L"12 the section has no 'SiteID', so programs ignore all of it\n"
              L"14 programs look at the first section of this name, in line 12\n");
    EXPECT_EQ(text.DahsIds(), (std::vector<std::int32_t>{7}));
}

// Every finding of the library points to the line that holds its key, however the file is written.
TEST(SiteText, FindingsPointToTheirLines) {
    for (const char* header : {"[Dahs4]", "[dahs4] ; xy", "  [ DAHS4 ]", "[other]\n[Dahs4]"}) {
        const std::string file =
            std::string(header) +
            "\n;SiteID=no\nSiteID=7\n dahscomputername = a-name-that-is-too-long\nAutoOutputEnabled=q,q\n"
            "RedundantDasRole=q\nVantorDir=\n[Dahs4]\nVantorDir=x\n";
        const SiteOf read(file);
        const SiteText text({file.begin(), file.end()});
        const size_t first = header[1] == 'o' ? 2 : 1;
        std::map<std::wstring, size_t> lines;
        for (const std::wstring& finding : read.site.Problems()) {
            lines[finding.substr(0, finding.find(L':'))] = text.LineOf(finding);
        }
        const std::map<std::wstring, size_t> expected = {
            {L"STR-0183", 0},         {L"STR-084", first + 2},  {L"STR-0189", first + 3}, {L"STR-0172", first + 4},
            {L"STR-0173", first + 4}, {L"STR-0179", first + 5}, {L"STR-085", first + 6},  {L"STR-142", first},
            {L"STR-086", first},      {L"STR-087", first},      {L"STR-088", first},      {L"STR-0160", first},
            {L"STR-089", first},      {L"STR-024", first},      {L"STR-0174", first},     {L"STR-031", 0}};
        EXPECT_EQ(lines, expected) << header;
    }
}

TEST(SiteDiff, TellsEffectsAndNoPasswords) {
    SiteOf first(v5::Section(1)), same(v5::Section(1, "; another look\nHDR=yes\n")),
        other(v5::Section(1, "SQLAlarms=Provider=p;Pwd=y;alarms\nLogsDir=L\n"));
    EXPECT_TRUE(Differences(first.site, same.site).empty());
    std::wstring told;
    for (const Difference& each : Differences(first.site, other.site)) {
        told += std::to_wstring(each.dahsID) + L" " + each.name + L" " + each.first + L" > " + each.second + L"\n";
    }
    EXPECT_EQ(
        told,
        L"1 VantorLogsDir D:\\V\\Logs > L\n1 VantorMailLogsDir D:\\V\\Logs\\MailLogs > L\\MailLogs\n"
        L"1 SqlConnectionString_Alarms Provider=p;Pwd=***;alarms > Provider=p;Pwd=***;alarms (with another password)\n"
        L"1 SqlConnectionString_AlarmsNoninteractive Provider=p;Pwd=***;alarms > Provider=p;Pwd=***;alarms (with "
        L"another password)\n"
        L"1 SqlConnectionString_Alarms_DotNet Pwd=***;alarms > Pwd=***;alarms (with another password)\n"
        L"1 SqlConnectionString_AlarmsNoninteractive_DotNet Pwd=***;alarms > Pwd=***;alarms (with another password)\n");
    SiteOf moved("[Dahs2]" + v5::Section(1).substr(7));
    EXPECT_EQ(Differences(first.site, moved.site).size(), 2u);
}

}  // namespace v5site
