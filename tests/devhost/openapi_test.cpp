#include "openapi.h"

#include <gtest/gtest.h>

#include "codec/json_reader.h"
#include "codec/json_writer.h"

namespace {

using wex::BindingProperty;

// A table with what the plug-in's own routes lack: a body, a header, an optional field, an enumeration in a
// collection, a route without a result.
TEST(OpenApiDocument, TellsEveryKindOfArgumentFieldAndResultOfTheTable) {
    const HostEnumeratorRecord blue{nullptr, "BLUE", "", 2};
    const HostEnumeratorRecord red{&blue, "RED", "", 1};
    const HostFieldRecord tags{nullptr, "tags", "", 0, 15, 12, "", 1};
    const HostFieldRecord shade{&tags, "shade", "the colour", 0, 16, 0, "Paint Shade", 1};
    const HostFieldRecord name{&shade, "name", "", 0, 12, 0, "", 0};
    const HostTypeRecord paint{nullptr, "Paint", "", 0, "A tin", nullptr, 0, &name, nullptr, 3};
    const HostTypeRecord color{&paint, "Paint Shade", "", 0, "", nullptr, 0, nullptr, &red, 2};
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
    const HostApiTable table{&endpoint, 1, &color, 2, &event, 1};

    const BindingProperty document = wex::ParseJson(tav::host::OpenApiDocument(&table));
    EXPECT_EQ(wex::WriteJson(document.Member("paths").Member("/paint/{id}")),
              R"({"put":{"operationId":"PutPaintById","parameters":[{"description":"which tin","in":"path",)"
              R"("name":"id","required":true,"schema":{"format":"uint64","minimum":0,"type":"integer"}},)"
              R"({"in":"header","name":"X-Trace","required":false,"schema":{"type":"string"}},)"
              R"({"content":{"application/json":{"schema":{"items":{"$ref":"#/components/schemas/Paint_Shade"},)"
              R"("type":"array"}}},"description":"As JSON text, or member by member: colors.0=...&colors.1=...",)"
              R"("in":"query","name":"colors","required":false}],"requestBody":{"content":{"application/json":)"
              R"({"schema":{"$ref":"#/components/schemas/Paint"}}},"required":true},"responses":{"204":)"
              R"({"description":"Done, without a value"},"default":{"content":{"application/json":{"schema":)"
              R"({"$ref":"#/components/schemas/Failure"}}},"description":"A failure, with the status of the )"
              R"(answer"}},"summary":"Repaint","tags":["tav-leagues"]}})");
    const BindingProperty& schemas = document.Member("components").Member("schemas");
    EXPECT_EQ(wex::WriteJson(schemas.Member("Paint")),
              R"({"description":"A tin","properties":{"name":{"type":"string"},"shade":{"$ref":)"
              R"("#/components/schemas/Paint_Shade","description":"the colour"},"tags":{"items":{"type":"string"},)"
              R"("type":"array"}},"required":["name"],"type":"object"})");
    EXPECT_EQ(wex::WriteJson(schemas.Member("Paint_Shade")),
              R"({"description":"","enum":["RED","BLUE"],"type":"string","x-enum-values":{"BLUE":2,"RED":1}})");
    EXPECT_EQ(wex::WriteJson(document.Member("webhooks")),
              R"({"OnPaint":{"post":{"description":"Published by the plug-in; GET /devhost/events streams it as )"
              R"(\"event: OnPaint\" with the payload as data","operationId":"eventOnPaint","requestBody":)"
              R"({"content":{"application/json":{"schema":{"$ref":"#/components/schemas/Paint"}}}},"responses":)"
              R"({"200":{"description":"Seen"}},"summary":"A tin was painted"}}})");
}

TEST(OpenApiDocument, TellsTheControlRoutesAloneWithoutATable) {
    const BindingProperty document = wex::ParseJson(tav::host::OpenApiDocument(nullptr));
    EXPECT_EQ(document.Member("info").Member("version").AsString(), "no-plug-in");
    EXPECT_EQ(wex::WriteJson(document.Member("webhooks")), "{}");
    for (const wex::BindingMember member : document.Member("paths").Members()) {
        EXPECT_EQ(member.name.rfind("/devhost/", 0), 0u) << member.name;
    }
    const BindingProperty& paths = document.Member("paths");
    EXPECT_EQ(wex::WriteJson(paths.Member("/devhost/resources/{uri}").Member("get").Member("parameters")),
              R"([{"description":"May hold slashes","in":"path","name":"uri","required":true,)"
              R"("schema":{"type":"string"}}])");
    EXPECT_EQ(paths.Member("/devhost/faults/{destination}/{method}").Member("put").Member("operationId").AsString(),
              "putDevhostFaultsByDestinationByMethod");
    EXPECT_EQ(wex::WriteJson(paths.Member("/devhost/journal").Member("delete").Member("responses").Member("204")),
              R"({"description":"Done"})");
}

}  // namespace
