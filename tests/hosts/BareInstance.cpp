#include "hosts/BareInstance.h"

#include "hosts/SharedLibrary.h"
#include "hosts/Vst2Host.h"

#include <lv2/core/lv2.h>
#include <lv2/urid/urid.h>
#include <pluginterfaces/base/ipluginbase.h>
#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>

#include <map>
#include <mutex>
#include <stdexcept>
#include <string_view>

namespace
{
void expect (bool holds, const char* what)
{
    if (! holds)
        throw std::runtime_error (what);
}

//======================================================================================================================
void comeAndGoAsVst3()
{
    const SharedLibrary library (libraryPathOf (PluginFormat::vst3));
    expect (library.function<bool (*) (void*)> ("ModuleEntry") (library.handle()), "the module does not begin");
    auto* factory = library.function<Steinberg::IPluginFactory* (*) ()> ("GetPluginFactory")();

    for (auto index = 0; index < factory->countClasses(); ++index)
    {
        Steinberg::PClassInfo info {};
        factory->getClassInfo (index, &info);

        if (std::string_view (info.category) != kVstAudioEffectClass)
            continue;

        Steinberg::Vst::IComponent* component = nullptr;
        factory->createInstance (info.cid, Steinberg::Vst::IComponent_iid, reinterpret_cast<void**> (&component));
        expect (component != nullptr, "the factory makes no component");
        expect (component->initialize (nullptr) == Steinberg::kResultOk, "the component does not begin");
        component->terminate();
        component->release();
    }

    factory->release();
    library.function<bool (*)()> ("ModuleExit")();
}

//======================================================================================================================
/** Numbers for names, as every host of this format keeps them. */
class Names
{
public:
    static LV2_URID map (LV2_URID_Map_Handle handle, const char* uri)
    {
        auto& names = *static_cast<Names*> (handle);
        const std::scoped_lock guard (names.lock);
        return names.numbers.try_emplace (uri, static_cast<LV2_URID> (names.numbers.size() + 1)).first->second;
    }

private:
    std::mutex lock;
    std::map<std::string, LV2_URID> numbers;
};

void comeAndGoAsLv2()
{
    const auto path = libraryPathOf (PluginFormat::lv2);
    const SharedLibrary library (path);
    const auto* descriptor = library.function<LV2_Descriptor_Function> ("lv2_descriptor") (0);
    expect (descriptor != nullptr, "the library has no plug-in");

    Names names;
    LV2_URID_Map map { &names, Names::map };
    const LV2_Feature mapFeature { LV2_URID__map, &map };
    const LV2_Feature* const features[] = { &mapFeature, nullptr };
    const auto bundle = path.substr (0, path.find_last_of ('/') + 1);
    auto* instance = descriptor->instantiate (descriptor, 48000.0, bundle.c_str(), features);
    expect (instance != nullptr, "the plug-in makes no instance");
    descriptor->cleanup (instance);
}
} // namespace

void comeAndGo (PluginFormat format)
{
    switch (format)
    {
        case PluginFormat::vst2:
        {
            const Vst2Host host (libraryPathOf (PluginFormat::vst2));
            return;
        }
        case PluginFormat::vst3:
            return comeAndGoAsVst3();
        case PluginFormat::lv2:
            return comeAndGoAsLv2();
    }
}
