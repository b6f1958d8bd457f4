#include "frontend/credits_view.h"

#include "play/kolvex.h"
#include "world/camera.h"

namespace {

constexpr std::uint32_t TransitionDuration = 2000; // ms
constexpr std::uint32_t PageDuration = 20000;      // ms

void PlaceCamera(float way) {
    camera.SetPosition(0.0F, 0.0F, 4.0F * way - 8.0F);
    camera.SetAngles(-50.0F * way, 0.0F);
}

} // namespace

void CreditsView::Start() {
    pages.Add({"P R O G R A M M I N G", {"Teodor Halvik"}});
    pages.Add({"2 D / 3 D  A R T", {"Mirela Ostrand"}});
    pages.Add({"M U S I C / S O U N D S", {"Anselm Corvay"}});
    mode = Mode::Menu;
    transition.Set(TransitionDuration, true);
    transition.Stop();
    page.Set(PageDuration, false);
    page.Stop();
}

bool CreditsView::Enter() {
    if (mode != Mode::Menu) return false;
    transition.Start();
    mode = Mode::Credits;
    return true;
}

void CreditsView::Leave() {
    window.visible = false;
    transition.Start();
    mode = Mode::Back;
}

float CreditsView::Way() const {
    if (mode == Mode::Menu) return 0.0F;
    const auto progress = static_cast<float>(transition.Progress());
    return mode == Mode::Credits ? progress : 1.0F - progress;
}

bool CreditsView::Update(std::uint32_t delta) {
    const bool isBack = transition.Update(delta) && EndTransition();
    if (mode == Mode::Credits && page.Update(delta)) showsCredits = !showsCredits;
    // The last step goes beyond the end, so the camera is put exactly where the way ends.
    if (mode != Mode::Menu || isBack) PlaceCamera(Way());
    return isBack;
}

bool CreditsView::EndTransition() {
    if (mode == Mode::Back) {
        mode = Mode::Menu;
        page.Stop();
        return true;
    }
    window.visible = true;
    page.Start();
    showsCredits = true;
    return false;
}

void CreditsView::Draw() const {
    if (mode != Mode::Credits || !page.IsRunning()) return;
    if (showsCredits)
        pages.DrawCredits(page.Progress());
    else
        CreditsPages::DrawHighScores(kolvex.highScores, page.Progress());
}
