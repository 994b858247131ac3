#include "tests/com/type_library_dump.h"

#include <map>
#include <stdexcept>

#include "addon/com/com_ptr.h"

namespace orv::tests {
namespace {

using addon::com::ComPtr;

void Require(HRESULT result, const char* what) {
    if (FAILED(result))
        throw std::runtime_error(std::string(what) + " failed with " + std::to_string(result));
}

// Identifiers are plain letters.
std::string Narrow(const wchar_t* text, std::size_t length) {
    std::string narrow;
    for (std::size_t i = 0; i < length; ++i)
        narrow += static_cast<char>(text[i]);
    return narrow;
}

std::string Take(BSTR text) {
    const std::string narrow = text ? Narrow(text, SysStringLen(text)) : std::string();
    SysFreeString(text);
    return narrow;
}

template <typename Info>
std::string NameOf(Info& info, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    Require(info.GetDocumentation(member, &name, nullptr, nullptr, nullptr), "GetDocumentation");
    return Take(name);
}

std::string SimpleType(VARTYPE type) {
    static const std::map<VARTYPE, const char*> names = {{VT_I2, "short"},
                                                         {VT_I4, "long"},
                                                         {VT_R4, "float"},
                                                         {VT_BSTR, "BSTR"},
                                                         {VT_DISPATCH, "IDispatch*"},
                                                         {VT_BOOL, "VARIANT_BOOL"},
                                                         {VT_VARIANT, "VARIANT"},
                                                         {VT_UNKNOWN, "IUnknown*"},
                                                         {VT_UI1, "byte"},
                                                         {VT_VOID, "void"},
                                                         {VT_HRESULT, "HRESULT"}};
    const auto found = names.find(type);
    return found != names.end() ? found->second : "type " + std::to_string(type);
}

std::string TypeText(ITypeInfo& info, const TYPEDESC& type) {
    if (type.vt == VT_PTR)
        return TypeText(info, *type.lptdesc) + "*";
    if (type.vt != VT_USERDEFINED)
        return SimpleType(type.vt);
    ComPtr<ITypeInfo> named;
    Require(info.GetRefTypeInfo(type.hreftype, named.Put()), "GetRefTypeInfo");
    return NameOf(*named.Get());
}

std::string Direction(USHORT flags) {
    std::string text;
    const auto add = [&](USHORT flag, const char* word) {
        if (flags & flag)
            text += (text.empty() ? "" : ", ") + std::string(word);
    };
    add(PARAMFLAG_FIN, "in");
    add(PARAMFLAG_FOUT, "out");
    add(PARAMFLAG_FRETVAL, "retval");
    add(PARAMFLAG_FOPT, "optional");
    return "[" + text + "] ";
}

std::string Arguments(ITypeInfo& info, const FUNCDESC& function) {
    std::vector<BSTR> names(static_cast<std::size_t>(function.cParams) + 1, nullptr);
    UINT count = 0;
    Require(info.GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count), "GetNames");
    std::string text;
    for (int i = 0; i < function.cParams; ++i) {
        const ELEMDESC& argument = function.lprgelemdescParam[i];
        text += (i == 0 ? "" : ", ") + Direction(argument.paramdesc.wParamFlags) + TypeText(info, argument.tdesc);
        // The value of a property that is put has no name of its own.
        BSTR& name = names[static_cast<std::size_t>(i) + 1];
        if (name)
            text += " " + Take(std::exchange(name, nullptr));
    }
    SysFreeString(names[0]);
    return text;
}

std::string Prefix(INVOKEKIND kind) {
    switch (kind) {
    case INVOKE_PROPERTYGET:
        return "get ";
    case INVOKE_PROPERTYPUT:
        return "put ";
    case INVOKE_PROPERTYPUTREF:
        return "putref ";
    default:
        return "";
    }
}

std::string FunctionLine(ITypeInfo& info, const std::string& owner, UINT index) {
    FUNCDESC* function = nullptr;
    Require(info.GetFuncDesc(index, &function), "GetFuncDesc");
    // Numbered alike in both word sizes.
    const auto slot = static_cast<unsigned>(function->oVft) / sizeof(void*);
    const std::string line = "member " + owner + "." + NameOf(info, function->memid) + ": id " +
                             std::to_string(function->memid) + ", slot " + std::to_string(slot) + ", " +
                             Prefix(function->invkind) + TypeText(info, function->elemdescFunc.tdesc) + "(" +
                             Arguments(info, *function) + ")";
    info.ReleaseFuncDesc(function);
    return line;
}

/// The table of functions behind a dual interface; its dispatch side repeats what IDispatch has.
ComPtr<ITypeInfo> VirtualSide(ITypeInfo& info) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> side;
    if (info.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference) == S_OK)
        Require(info.GetRefTypeInfo(reference, side.Put()), "GetRefTypeInfo");
    return side ? side : ComPtr<ITypeInfo>(&info);
}

void AddInterface(ITypeInfo& given, const TYPEATTR& kind, std::vector<std::string>& lines) {
    const std::string name = NameOf(given);
    lines.push_back("interface " + name + ": " + GuidText(kind.guid) +
                    ((kind.wTypeFlags & TYPEFLAG_FDUAL) ? " dual" : ""));
    const ComPtr<ITypeInfo> side = VirtualSide(given);
    TYPEATTR* attributes = nullptr;
    Require(side->GetTypeAttr(&attributes), "GetTypeAttr");
    const UINT functions = attributes->cFuncs;
    side->ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < functions; ++i)
        lines.push_back(FunctionLine(*side.Get(), name, i));
}

void AddClass(ITypeInfo& info, const TYPEATTR& kind, std::vector<std::string>& lines) {
    const std::string name = NameOf(info);
    lines.push_back("class " + name + ": " + GuidText(kind.guid) +
                    ((kind.wTypeFlags & TYPEFLAG_FCONTROL) ? " control" : ""));
    for (UINT i = 0; i < kind.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> face;
        INT flags = 0;
        Require(info.GetRefTypeOfImplType(i, &reference), "GetRefTypeOfImplType");
        Require(info.GetRefTypeInfo(reference, face.Put()), "GetRefTypeInfo");
        Require(info.GetImplTypeFlags(i, &flags), "GetImplTypeFlags");
        lines.push_back("class " + name + " offers " + NameOf(*face.Get()) +
                        ((flags & IMPLTYPEFLAG_FDEFAULT) ? " as its default" : "") +
                        ((flags & IMPLTYPEFLAG_FSOURCE) ? " as its events" : ""));
    }
}

void AddType(ITypeInfo& info, std::vector<std::string>& lines) {
    TYPEATTR* attributes = nullptr;
    Require(info.GetTypeAttr(&attributes), "GetTypeAttr");
    const TYPEATTR kind = *attributes;
    info.ReleaseTypeAttr(attributes);
    if (kind.typekind == TKIND_COCLASS)
        AddClass(info, kind, lines);
    else if (kind.typekind == TKIND_INTERFACE || kind.typekind == TKIND_DISPATCH)
        AddInterface(info, kind, lines);
    else
        lines.push_back("type " + NameOf(info) + ": kind " + std::to_string(kind.typekind));
}

} // namespace

std::string GuidText(REFGUID id) {
    wchar_t text[40] = {};
    return Narrow(text, static_cast<std::size_t>(StringFromGUID2(id, text, ARRAYSIZE(text)) - 1));
}

std::vector<std::string> DumpTypeLibrary(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    Require(library.GetLibAttr(&attributes), "GetLibAttr");
    std::vector<std::string> lines;
    lines.push_back("library: " + GuidText(attributes->guid) + " version " + std::to_string(attributes->wMajorVerNum) +
                    "." + std::to_string(attributes->wMinorVerNum));
    library.ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        Require(library.GetTypeInfo(i, info.Put()), "GetTypeInfo");
        AddType(*info.Get(), lines);
    }
    // The component's library repeats interfaces of the contracts.
    const std::string prefix = NameOf(library, -1) + " ";
    for (std::string& line : lines)
        line.insert(0, prefix);
    return lines;
}

} // namespace orv::tests
