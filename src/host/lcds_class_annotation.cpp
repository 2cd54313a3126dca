#include "host/lcds_class_annotation.h"

#include <vector>

#include "types/registry.h"

namespace wex {

namespace {

struct PendingRecord {
    BindingProperty* value;
    const BindingTypeInfo* type;
};

class Annotator {
  public:
    Annotator(const BindingTypeRegistry& registry, const LcdsClassNameLookup& classNameOf)
        : registry_(registry), classNameOf_(classNameOf) {}

    void Run(BindingProperty& value, const BindingTypeIdentifier& type) {
        Push(value, type);
        while (!pending_.empty()) {
            const PendingRecord record = pending_.back();
            pending_.pop_back();
            Annotate(*record.value, *record.type);
        }
    }

  private:
    // The record's own member comes first: once it is there the record does
    // not change again, so references to its members stay valid.
    void Annotate(BindingProperty& record, const BindingTypeInfo& type) {
        if (record.Kind() != BindingPropertyKind::Structure) {
            return;
        }
        const std::string_view className = classNameOf_(type.name);
        if (!className.empty()) {
            record.Member("__class").SetString(className);
        }
        for (const BindingFieldInfo& field : type.fields) {
            if (record.HasMember(field.name)) {
                Push(record.Member(field.name), field.type);
            }
        }
    }

    void Push(BindingProperty& value, const BindingTypeIdentifier& type) {
        if (type.type == nullptr) {
            return;
        }
        const BindingTypeInfo* info = registry_.FindType(type.type->id);
        if (info == nullptr || info->isEnum) {
            return;
        }
        if (type.kind == BindingTypeKind::Struct) {
            pending_.push_back({&value, info});
        } else if (type.kind == BindingTypeKind::Vector && value.Kind() == BindingPropertyKind::Collection) {
            for (std::size_t index = 0; index < value.Size(); ++index) {
                pending_.push_back({&value.At(index), info});
            }
        } else if (type.kind == BindingTypeKind::Map && value.Kind() == BindingPropertyKind::Structure) {
            for (const BindingMember member : value.Members()) {
                pending_.push_back({&value.Member(member.name), info});
            }
        }
    }

    const BindingTypeRegistry& registry_;
    const LcdsClassNameLookup& classNameOf_;
    std::vector<PendingRecord> pending_;
};

}  // namespace

void AnnotateLcdsClasses(BindingProperty& value, const BindingTypeIdentifier& type, const BindingTypeRegistry& registry,
                         const LcdsClassNameLookup& classNameOf) {
    Annotator(registry, classNameOf).Run(value, type);
}

}  // namespace wex
