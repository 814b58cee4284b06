// Skins: named pictures that windows draw by state index.
//
// State index convention of the toolkit: 0 normal, 1 hover, 2 pushed or
// checked, 3 disabled. Skins are declared in a theme's <skin> element, the
// element name being the skin type ("imglist", "imgframe", "colorrect", ...).
#pragma once

#include <pugixml.hpp>

#include <memory>

#include "soui/render.h"
#include "soui/sobject.h"

namespace SOUI {

class ISkinObj : public SObject {
 public:
  // Draws state `state` into rc. States past GetStates() draw state 0.
  virtual void DrawByIndex(IRenderTarget* rt, LPCRECT rc, int state, BYTE alpha = 0xFF) const = 0;
  // Natural size of one state in device pixels (0x0 for colour skins).
  virtual SIZE GetSkinSize() const = 0;
  virtual int GetStates() const = 0;
  // The scale (percent) this instance was made for.
  virtual int GetScale() const { return scale_; }
  // A copy for another scale; images are resized and margins scaled.
  virtual std::shared_ptr<ISkinObj> Scale(int scale) const = 0;

  const SStringW& GetSkinName() const { return name_; }
  void SetSkinName(const SStringW& n) { name_ = n; }

 protected:
  int scale_ = 100;

 private:
  SStringW name_;
};
using ISkinObjPtr = std::shared_ptr<ISkinObj>;

}  // namespace SOUI
