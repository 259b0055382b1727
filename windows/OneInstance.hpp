// The one instance of a window that exists once (About, Help, Preferences,
// Export): made at first use, and gone for the accessor as soon as the
// window closes, although Qt frees it only on the next turn of the loop.
//
//   OneInstance<AboutWindow> instance;  // beside AboutWindow's code
//   instance.Get([] { return new AboutWindow(); });
//   instance.Forget(this);  // on closing and in the destructor
#pragma once

namespace quill {

template <typename Window>
class OneInstance {
 public:
  // The instance; `make` builds it when there is none.
  template <typename Make>
  Window* Get(Make make) {
    if (window_ == nullptr) window_ = make();
    return window_;
  }

  // The instance if there is one, without making it.
  Window* Existing() const { return window_; }

  // Forgets `window` when it is the instance.
  void Forget(const Window* window) {
    if (window_ == window) window_ = nullptr;
  }

 private:
  Window* window_ = nullptr;
};

}  // namespace quill
