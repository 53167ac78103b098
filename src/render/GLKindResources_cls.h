// What the drawing of a kind holds on the GL thread (buffers, textures) for the objects of that
// kind, one holder per view: the kind table's SLOT_GL_RESOURCES slot of a class word makes it,
// the frame passes keep it, and the kind's draw entry finds it through the draw status.
// GL thread only; the holders die while their context is current.
#pragma once

#include <wx/string.h>

#include <functional>
#include <map>
#include <memory>

class GLKindResource_cls {
public:
    virtual ~GLKindResource_cls() = default;
    // Maker of a kind's holder, as the kind table keeps it.
    using Maker_fn = std::function<std::unique_ptr<GLKindResource_cls>()>;
    // Puts the maker into the kind's entry. Main thread, while registering.
    static void Register(const wxString& strClassWord, Maker_fn maker);
};

class GLKindResources_cls {
public:
    // The holder of the class word, made on first use; null when the kind has no maker.
    GLKindResource_cls* GetPC(const wxString& strClassWord);
    template <class T> T* GetPC(const wxString& strClassWord) { return static_cast<T*>(GetPC(strClassWord)); }
    void Clear() { mMapResource.clear(); }

private:
    std::map<wxString, std::unique_ptr<GLKindResource_cls>> mMapResource;
};
