#include "openapi.h"

#include <gtest/gtest.h>

#include <sstream>

#include "codec/json_reader.h"
#include "codec/json_writer.h"
#include "support/case_table.h"

namespace {

using wex::BindingProperty;

// A table with what the plug-in's own routes lack: a body, a header, an optional field, an enumeration in a
// collection and one without values, a route without a result.
TEST(OpenApiDocument, TellsEveryKindOfArgumentFieldAndResultOfTheTableAndTheControlRoutesWithoutOne) {
    const HostEnumeratorRecord blue{nullptr, "BLUE", "", 2};
    const HostEnumeratorRecord red{&blue, "RED", "", 1};
    const HostFieldRecord tags{nullptr, "tags", "", 0, 15, 12, "", 1};
    const HostFieldRecord shade{&tags, "shade", "the colour", 0, 16, 0, "Paint Shade", 1};
    const HostFieldRecord name{&shade, "name", "", 0, 12, 0, "", 0};
    const HostTypeRecord paint{nullptr, "Paint", "", 0, "A tin", nullptr, 0, &name, nullptr, 3};
    const HostTypeRecord none{&paint, "Unpainted", "", 0, "", nullptr, 0, nullptr, nullptr, 0};
    const HostTypeRecord color{&none, "Paint Shade", "", 0, "", nullptr, 0, nullptr, &red, 2};
    const HostArgumentRecord colors{nullptr, "colors", "", 15, 16, "Paint Shade", 1};
    const HostArgumentRecord trace{&colors, "X-Trace", "", 12, 0, "", 1};
    const HostArgumentRecord body{&trace, "paint", "", 17, 0, "Paint", 0};
    const HostArgumentRecord id{&body, "id", "which tin", 9, 0, "", 0};
    const HostLocationRecord inQuery{nullptr, 1};
    const HostLocationRecord inHeader{&inQuery, 4};
    const HostLocationRecord inBody{&inHeader, 5};
    const HostLocationRecord inPath{&inBody, 2};
    HostEndpointRecord endpoint{};
    endpoint.functionName = "PutPaintById";
    endpoint.arguments = &id;
    endpoint.argumentCount = 4;
    endpoint.locations = &inPath;
    endpoint.pathTemplate = "/paint/{id}";
    endpoint.method = HostMethodPut;
    endpoint.description = "Repaint";
    const HostEventRecord event{nullptr, "OnPaint", "", "Paint", "A tin was painted", nullptr, 0};
    const HostApiTable table{&endpoint, 1, &color, 3, &event, 1};

    const BindingProperty withTable = wex::ParseJson(tav::host::OpenApiDocument(&table));
    const BindingProperty without = wex::ParseJson(tav::host::OpenApiDocument(nullptr));
    for (const auto& row : tav::test::ReadCaseTable(__FILE__, "openapi_members.tsv", 3)) {
        SCOPED_TRACE(row[0] + ": " + row[1]);
        const BindingProperty* member = row[0] == "table" ? &withTable : &without;
        std::istringstream names(row[1]);
        for (std::string name; std::getline(names, name, ' ');) {
            member = &member->Member(name);
        }
        EXPECT_EQ(wex::WriteJson(*member), row[2]);
    }
    // Without a table only the control routes are told.
    for (const wex::BindingMember member : without.Member("paths").Members()) {
        EXPECT_EQ(member.name.rfind("/devhost/", 0), 0u) << member.name;
    }
}

}  // namespace
