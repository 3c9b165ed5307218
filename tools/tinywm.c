/* A window manager for tests: keeps WM_STATE and _NET_WM_STATE, grants every request, no decorations, no focus policy. */
#include <X11/Xatom.h>
#include <X11/Xutil.h>
static Display *d; static Atom wmState, wmChange, netState;
static int quiet(Display *x, XErrorEvent *e) { (void)x; (void)e; return 0; }
static void state(Window w, long s) {
  long v[2] = { s, None };
  if (s == WithdrawnState) XDeleteProperty(d, w, wmState);
  else XChangeProperty(d, w, wmState, wmState, 32, PropModeReplace, (unsigned char *)v, 2);
}
static void net(Window w, long action, Atom a) { /* 0 remove, 1 add, 2 toggle */
  Atom t, *old = 0, out[64]; int f, n = 0, had = 0; unsigned long len = 0, left, i;
  if (a) XGetWindowProperty(d, w, netState, 0, 60, False, XA_ATOM, &t, &f, &len, &left, (unsigned char **)&old);
  for (i = 0; i < len; i++) if (old[i] == a) had = 1; else out[n++] = old[i];
  if (action == 1 || (action == 2 && !had)) out[n++] = a;
  if (a) XChangeProperty(d, w, netState, XA_ATOM, 32, PropModeReplace, (unsigned char *)out, n);
  if (old) XFree(old);
}
int main(void) {
  XEvent e; XConfigureRequestEvent *c = &e.xconfigurerequest; XClientMessageEvent *m = &e.xclient; Window root;
  if (!(d = XOpenDisplay(0))) return 1;
  XSetErrorHandler(quiet); root = DefaultRootWindow(d);
  wmState = XInternAtom(d, "WM_STATE", 0); wmChange = XInternAtom(d, "WM_CHANGE_STATE", 0); netState = XInternAtom(d, "_NET_WM_STATE", 0);
  XSelectInput(d, root, SubstructureRedirectMask | SubstructureNotifyMask);
  for (;;) {
    XNextEvent(d, &e);
    if (e.type == MapRequest) { state(e.xmaprequest.window, NormalState); XMapWindow(d, e.xmaprequest.window); }
    else if (e.type == UnmapNotify && (e.xunmap.event == root || e.xunmap.send_event)) state(e.xunmap.window, WithdrawnState);
    else if (e.type == ConfigureRequest) {
      XWindowChanges w = { c->x, c->y, c->width, c->height, c->border_width, c->above, c->detail };
      XConfigureWindow(d, c->window, c->value_mask, &w);
    } else if (e.type == ClientMessage && m->message_type == netState) { net(m->window, m->data.l[0], m->data.l[1]); net(m->window, m->data.l[0], m->data.l[2]); }
    else if (e.type == ClientMessage && m->message_type == wmChange && m->data.l[0] == IconicState) state(m->window, IconicState);
  }
}
