// Draws the PNGs of the default theme (theme/default/img/) at 100 % size.
// Not part of the CMake build; rebuild and rerun by hand after a change:
//   g++ -std=c++17 -O2 -Wall -Wextra -Werror theme/tools/make_theme_images.cpp
//       $(pkg-config --cflags --libs cairo) -o /tmp/make_theme_images
//   /tmp/make_theme_images theme/default/img
// Multi-state images put their frames side by side: normal, hover, pushed,
// disabled (tabs: normal, hover, selected).
#include <cairo.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>

namespace {

struct Rgba {
  double r, g, b, a;
};

Rgba Hex(unsigned rgb, double a = 1.0) {
  return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, a};
}

void Set(cairo_t* cr, Rgba c) { cairo_set_source_rgba(cr, c.r, c.g, c.b, c.a); }

// Palette shared with the colour table of uires.xml.
const Rgba kRise = Hex(0xF23B3B);
const Rgba kRiseDark = Hex(0xC92A2A);
const Rgba kFall = Hex(0x19A15F);
const Rgba kBlue = Hex(0x2F6BFF);
const Rgba kAmber = Hex(0xFFA31A);
const Rgba kWhite = Hex(0xFFFFFF);

// Colours of window chrome (caption buttons, small glyph buttons), per variant.
struct Chrome {
  const char* suffix;  // appended to the file name
  Rgba strong, normal, muted, disabled, hover_bg, push_bg, accent;
};
const Chrome kLightChrome = {"",           Hex(0x1F2329), Hex(0x4E5969), Hex(0x86909C), Hex(0xC2C7CF),
                             Hex(0xE5E6EB), Hex(0xD5D8DE), kBlue};
const Chrome kDarkChrome = {"_dark",       Hex(0xFFFFFF), Hex(0xB4BAC3), Hex(0x7D8590), Hex(0x4B525C),
                            Hex(0x3A4049), Hex(0x454C56), Hex(0x5B8CFF)};

using Painter = std::function<void(cairo_t*, int frame)>;

std::string g_dir;
int g_failures = 0;

// One image of `frames` frames of w x h, painted frame by frame with the
// origin moved to the frame.
void Make(const char* file, int w, int h, int frames, const Painter& paint) {
  cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w * frames, h);
  cairo_t* cr = cairo_create(s);
  for (int i = 0; i < frames; ++i) {
    cairo_save(cr);
    cairo_translate(cr, w * i, 0);
    cairo_rectangle(cr, 0, 0, w, h);
    cairo_clip(cr);
    paint(cr, i);
    cairo_restore(cr);
  }
  cairo_destroy(cr);
  const std::string path = g_dir + "/" + file;
  if (cairo_surface_write_to_png(s, path.c_str()) != CAIRO_STATUS_SUCCESS) {
    std::fprintf(stderr, "cannot write %s\n", path.c_str());
    ++g_failures;
  }
  cairo_surface_destroy(s);
}

void RoundRect(cairo_t* cr, double x, double y, double w, double h, double r) {
  cairo_new_sub_path(cr);
  cairo_arc(cr, x + w - r, y + r, r, -M_PI / 2, 0);
  cairo_arc(cr, x + w - r, y + h - r, r, 0, M_PI / 2);
  cairo_arc(cr, x + r, y + h - r, r, M_PI / 2, M_PI);
  cairo_arc(cr, x + r, y + r, r, M_PI, 3 * M_PI / 2);
  cairo_close_path(cr);
}

// Rounded only on the chosen side (segmented tabs).
void SideRoundRect(cairo_t* cr, double x, double y, double w, double h, double rl, double rr) {
  cairo_new_sub_path(cr);
  if (rr > 0) {
    cairo_arc(cr, x + w - rr, y + rr, rr, -M_PI / 2, 0);
    cairo_arc(cr, x + w - rr, y + h - rr, rr, 0, M_PI / 2);
  } else {
    cairo_line_to(cr, x + w, y);
    cairo_line_to(cr, x + w, y + h);
  }
  if (rl > 0) {
    cairo_arc(cr, x + rl, y + h - rl, rl, M_PI / 2, M_PI);
    cairo_arc(cr, x + rl, y + rl, rl, M_PI, 3 * M_PI / 2);
  } else {
    cairo_line_to(cr, x, y + h);
    cairo_line_to(cr, x, y);
  }
  cairo_close_path(cr);
}

void Disc(cairo_t* cr, double cx, double cy, double r, Rgba c) {
  Set(cr, c);
  cairo_arc(cr, cx, cy, r, 0, 2 * M_PI);
  cairo_fill(cr);
}

void Stroke(cairo_t* cr, Rgba c, double width) {
  Set(cr, c);
  cairo_set_line_width(cr, width);
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cr);
}

// ---- glyphs drawn in a box of size s at (x, y) ----

void Cross(cairo_t* cr, double cx, double cy, double half, Rgba c, double width) {
  cairo_move_to(cr, cx - half, cy - half);
  cairo_line_to(cr, cx + half, cy + half);
  cairo_move_to(cr, cx + half, cy - half);
  cairo_line_to(cr, cx - half, cy + half);
  Stroke(cr, c, width);
}

void Check(cairo_t* cr, double cx, double cy, double s, Rgba c, double width) {
  cairo_move_to(cr, cx - 0.45 * s, cy + 0.02 * s);
  cairo_line_to(cr, cx - 0.12 * s, cy + 0.33 * s);
  cairo_line_to(cr, cx + 0.45 * s, cy - 0.3 * s);
  Stroke(cr, c, width);
}

// "!" (up) or "i" (down) centred on cx, spanning s vertically.
void Mark(cairo_t* cr, double cx, double cy, double s, Rgba c, double width, bool info) {
  const double top = cy - s / 2, bottom = cy + s / 2;
  const double dot_y = info ? top + width / 2 : bottom - width / 2;
  const double bar_from = info ? top + width * 2.1 : top + width / 2;
  const double bar_to = info ? bottom - width / 2 : bottom - width * 2.1;
  Disc(cr, cx, dot_y, width * 0.65, c);
  cairo_move_to(cr, cx, bar_from);
  cairo_line_to(cr, cx, bar_to);
  Stroke(cr, c, width);
}

enum class Badge { Error, Tips, Warn, Success };

// A status icon: a filled shape with a white glyph; warnings are triangles.
void StatusIcon(cairo_t* cr, int size, Badge kind) {
  const double s = size, c = s / 2, stroke = std::max(1.6, s / 12.0);
  switch (kind) {
    case Badge::Error:
      Disc(cr, c, c, s / 2 - 0.5, kRise);
      Cross(cr, c, c, s * 0.17, kWhite, stroke);
      break;
    case Badge::Tips:
      Disc(cr, c, c, s / 2 - 0.5, kBlue);
      Mark(cr, c, c, s * 0.5, kWhite, stroke, true);
      break;
    case Badge::Success:
      Disc(cr, c, c, s / 2 - 0.5, kFall);
      Check(cr, c, c, s * 0.5, kWhite, stroke);
      break;
    case Badge::Warn: {
      // The round join of width 2r grows the shape by r: keep the corners inside.
      const double r = s * 0.09, top = r + s * 0.04, bottom = s - r - s * 0.06;
      cairo_move_to(cr, c, top);
      cairo_line_to(cr, s - r - 0.5, bottom);
      cairo_line_to(cr, r + 0.5, bottom);
      cairo_close_path(cr);
      Set(cr, kAmber);
      cairo_set_line_width(cr, 2 * r);
      cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
      cairo_stroke_preserve(cr);
      cairo_fill(cr);
      Mark(cr, c, s * 0.58, s * 0.4, kWhite, stroke, false);
      break;
    }
  }
}

// ---- caption buttons: 30 x 30, glyph 10 x 10, 1 px lines ----

struct ButtonLook {
  Rgba bg;
  Rgba glyph;
};

ButtonLook CaptionLook(int frame, bool close, const Chrome& ch) {
  switch (frame) {
    case 1: return close ? ButtonLook{kRise, kWhite} : ButtonLook{ch.hover_bg, ch.strong};
    case 2: return close ? ButtonLook{kRiseDark, kWhite} : ButtonLook{ch.push_bg, ch.strong};
    case 3: return {Hex(0, 0), ch.disabled};
    default: return {Hex(0, 0), ch.normal};
  }
}

void CaptionButton(const std::string& file, const Chrome& ch, const std::function<void(cairo_t*, Rgba)>& glyph,
                   bool close) {
  Make(file.c_str(), 30, 30, 4, [&](cairo_t* cr, int frame) {
    const ButtonLook look = CaptionLook(frame, close, ch);
    Set(cr, look.bg);
    cairo_paint(cr);
    glyph(cr, look.glyph);
  });
}

// A soft drop shadow below a rounded card; nine-patch source.
void DialogFrame(const char* file, Rgba fill, Rgba border, double shadow_alpha) {
  const int size = 32, inset = 5;
  Make(file, size, size, 1, [&](cairo_t* cr, int) {
    for (int i = inset; i >= 1; --i) {
      const double a = shadow_alpha * (inset - i + 1) / (inset * (inset + 1) / 2.0);
      RoundRect(cr, inset - i, inset - i + 1, size - 2 * (inset - i), size - 2 * (inset - i) - 1, 4 + i);
      Set(cr, Hex(0, a));
      cairo_fill(cr);
    }
    RoundRect(cr, inset, inset, size - 2 * inset, size - 2 * inset, 4);
    Set(cr, fill);
    cairo_fill(cr);
    RoundRect(cr, inset + 0.5, inset + 0.5, size - 2 * inset - 1, size - 2 * inset - 1, 3.5);
    Set(cr, border);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
  });
}

// Edit underline: 6 x 6 frames, the line along the bottom.
void Underline(const char* file, const Rgba (&lines)[4]) {
  Make(file, 6, 6, 4, [&](cairo_t* cr, int frame) {
    const double width = frame == 2 ? 2 : 1;
    Set(cr, lines[frame]);
    cairo_rectangle(cr, 0, 6 - width, 6, width);
    cairo_fill(cr);
  });
}

struct SegmentColors {
  Rgba fill[3];
  Rgba border[3];
};

// Segmented tab pieces, 12 x 12 frames (normal, hover, selected). The middle
// and right pieces leave out their left edge: the left neighbour draws it.
void Segment(const char* file, int side, const SegmentColors& col) {
  Make(file, 12, 12, 3, [&](cairo_t* cr, int frame) {
    const double rl = side < 0 ? 3 : 0, rr = side > 0 ? 3 : 0;
    const double x = side < 0 ? 0.5 : -0.5;
    SideRoundRect(cr, x, 0.5, 12 - x - 0.5, 11, rl, rr);
    Set(cr, col.fill[frame]);
    cairo_fill_preserve(cr);
    Set(cr, col.border[frame]);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
  });
}

std::string Name(const char* stem, const Chrome& ch) { return std::string(stem) + ch.suffix + ".png"; }

// Caption buttons, the small tab close, the expand chevron and the QR mark.
void DrawChrome(const Chrome& ch) {
  CaptionButton(Name("btn_close", ch), ch, [](cairo_t* cr, Rgba c) {
    Cross(cr, 15, 15, 4.5, c, 1.2);
  }, true);
  CaptionButton(Name("btn_min", ch), ch, [](cairo_t* cr, Rgba c) {
    Set(cr, c);
    cairo_rectangle(cr, 10, 15, 10, 1);
    cairo_fill(cr);
  }, false);
  CaptionButton(Name("btn_max", ch), ch, [](cairo_t* cr, Rgba c) {
    cairo_rectangle(cr, 10.5, 10.5, 9, 9);
    Set(cr, c);
    cairo_set_line_width(cr, 1);
    cairo_stroke(cr);
  }, false);
  CaptionButton(Name("btn_restore", ch), ch, [](cairo_t* cr, Rgba c) {
    Set(cr, c);
    cairo_set_line_width(cr, 1);
    cairo_rectangle(cr, 10.5, 12.5, 7, 7);
    cairo_stroke(cr);
    cairo_move_to(cr, 12.5, 12.5);
    cairo_line_to(cr, 12.5, 10.5);
    cairo_line_to(cr, 19.5, 10.5);
    cairo_line_to(cr, 19.5, 17.5);
    cairo_line_to(cr, 17.5, 17.5);
    cairo_stroke(cr);
  }, false);

  // Small close on tabs: a cross; hover and pushed get a round backing.
  Make(Name("box_close", ch).c_str(), 16, 16, 4, [&](cairo_t* cr, int frame) {
    if (frame == 1) Disc(cr, 8, 8, 7, ch.hover_bg);
    if (frame == 2) Disc(cr, 8, 8, 7, ch.push_bg);
    const Rgba glyph = frame == 3 ? ch.disabled : frame == 0 ? ch.muted : ch.strong;
    Cross(cr, 8, 8, 3, glyph, 1.2);
  });

  // Expand chevron pointing down.
  Make(Name("expand", ch).c_str(), 12, 12, 4, [&](cairo_t* cr, int frame) {
    const Rgba c[] = {ch.muted, ch.strong, ch.accent, ch.disabled};
    cairo_move_to(cr, 3, 4.75);
    cairo_line_to(cr, 6, 7.75);
    cairo_line_to(cr, 9, 4.75);
    Stroke(cr, c[frame], 1.3);
  });

  // QR mark: three finder squares and a few modules.
  Make(Name("qr_logo", ch).c_str(), 16, 16, 1, [&](cairo_t* cr, int) {
    Set(cr, ch.strong);
    cairo_set_line_width(cr, 1);
    const double finders[][2] = {{1, 1}, {10, 1}, {1, 10}};
    for (const auto& p : finders) {
      cairo_rectangle(cr, p[0] + 0.5, p[1] + 0.5, 4, 4);
      cairo_stroke(cr);
      cairo_rectangle(cr, p[0] + 2, p[1] + 2, 2, 2);
      cairo_fill(cr);
    }
    const int modules[][2] = {{10, 10}, {13, 10}, {11, 12}, {10, 14}, {13, 13}, {7, 2}, {7, 7}, {2, 7}};
    for (const auto& m : modules) cairo_rectangle(cr, m[0], m[1], 2, 2);
    cairo_fill(cr);
  });
}

void DrawAll() {
  // Red dots: 6 px plain, 8 px with a white ring, 12 px high stretchable pill.
  Make("reddot_small.png", 6, 6, 1, [](cairo_t* cr, int) { Disc(cr, 3, 3, 3, kRise); });
  Make("reddot.png", 8, 8, 1, [](cairo_t* cr, int) {
    Disc(cr, 4, 4, 4, kWhite);
    Disc(cr, 4, 4, 3, kRise);
  });
  Make("reddot_badge.png", 13, 12, 1, [](cairo_t* cr, int) {
    RoundRect(cr, 0, 0, 13, 12, 6);
    Set(cr, kRise);
    cairo_fill(cr);
  });

  DrawChrome(kLightChrome);
  DrawChrome(kDarkChrome);

  // Application mark: blue tile with a rising price line.
  Make("logo.png", 18, 18, 1, [](cairo_t* cr, int) {
    cairo_pattern_t* g = cairo_pattern_create_linear(0, 0, 0, 18);
    cairo_pattern_add_color_stop_rgb(g, 0, 0x4D / 255.0, 0x85 / 255.0, 1.0);
    cairo_pattern_add_color_stop_rgb(g, 1, 0x1D / 255.0, 0x4F / 255.0, 0xD8 / 255.0);
    RoundRect(cr, 0, 0, 18, 18, 4);
    cairo_set_source(cr, g);
    cairo_fill(cr);
    cairo_pattern_destroy(g);
    cairo_move_to(cr, 3.5, 12.5);
    cairo_line_to(cr, 7, 8.5);
    cairo_line_to(cr, 10, 10.5);
    cairo_line_to(cr, 14.5, 5);
    Stroke(cr, kWhite, 1.6);
    Disc(cr, 14.5, 5, 1.4, kWhite);
  });

  // Status icons: dialogs 32 px, toasts 20 px.
  Make("dialog_error.png", 32, 32, 1, [](cairo_t* cr, int) { StatusIcon(cr, 32, Badge::Error); });
  Make("dialog_tips.png", 32, 32, 1, [](cairo_t* cr, int) { StatusIcon(cr, 32, Badge::Tips); });
  Make("dialog_warn.png", 32, 32, 1, [](cairo_t* cr, int) { StatusIcon(cr, 32, Badge::Warn); });
  Make("dialog_success.png", 32, 32, 1, [](cairo_t* cr, int) { StatusIcon(cr, 32, Badge::Success); });
  Make("toast_error.png", 20, 20, 1, [](cairo_t* cr, int) { StatusIcon(cr, 20, Badge::Error); });
  Make("toast_tip.png", 20, 20, 1, [](cairo_t* cr, int) { StatusIcon(cr, 20, Badge::Tips); });
  Make("toast_warn.png", 20, 20, 1, [](cairo_t* cr, int) { StatusIcon(cr, 20, Badge::Warn); });
  Make("toast_succeed.png", 20, 20, 1, [](cairo_t* cr, int) { StatusIcon(cr, 20, Badge::Success); });

  // Dialog frames: the active one has a stronger border and shadow.
  DialogFrame("dialog_bg_normal.png", kWhite, Hex(0xE5E6EB), 0.16);
  DialogFrame("dialog_bg_selected.png", kWhite, Hex(0xC9CDD4), 0.28);
  DialogFrame("dialog_bg_normal_dark.png", Hex(0x2A2F36), Hex(0x3A4049), 0.35);
  DialogFrame("dialog_bg_selected_dark.png", Hex(0x2A2F36), Hex(0x4B525C), 0.55);

  const Rgba light_lines[4] = {Hex(0xC9CDD4), Hex(0x86909C), kBlue, Hex(0xE5E6EB)};
  const Rgba dark_lines[4] = {Hex(0x4B525C), Hex(0x7D8590), Hex(0x5B8CFF), Hex(0x33383F)};
  Underline("edit_underline.png", light_lines);
  Underline("edit_underline_dark.png", dark_lines);

  const SegmentColors light = {{kWhite, Hex(0xF2F3F5), kBlue}, {Hex(0xC9CDD4), Hex(0xC9CDD4), kBlue}};
  const SegmentColors dark = {{Hex(0x2A2F36), Hex(0x30363E), Hex(0x3D6FF0)},
                              {Hex(0x4B525C), Hex(0x4B525C), Hex(0x3D6FF0)}};
  Segment("segment_left.png", -1, light);
  Segment("segment_center.png", 0, light);
  Segment("segment_right.png", 1, light);
  Segment("segment_left_dark.png", -1, dark);
  Segment("segment_center_dark.png", 0, dark);
  Segment("segment_right_dark.png", 1, dark);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <output directory>\n", argv[0]);
    return 2;
  }
  g_dir = argv[1];
  DrawAll();
  return g_failures == 0 ? 0 : 1;
}
