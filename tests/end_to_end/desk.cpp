#include "tests/end_to_end/desk.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/linux/x11_connection.h"

namespace spellwick::testing_support {

using namespace std::chrono_literals;

xcb_window_t Desk::FindWindow(std::string_view start) const {
    xcb_connection_t* connection = m_session->Connection();
    const std::vector<xcb_window_t> windows = m_session->ClientList();
    for (auto at = windows.rbegin(); at != windows.rend(); ++at) {
        const xcb_window_t window = *at;
        const auto attributes = OwnReply(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, window), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            m_session->WindowName(window).starts_with(start)) {
            return window;
        }
    }
    return 0;
}

xcb_window_t Desk::WaitWindow(std::string_view start) const {
    xcb_window_t found = 0;
    WaitUntil([&] {
        found = FindWindow(start);
        return found != 0;
    });
    return found;
}

bool Desk::WaitGone(xcb_window_t window) const {
    return WaitUntil([&] {
        const auto windows = m_session->ClientList();
        return std::ranges::find(windows, window) == windows.end();
    });
}

Area Desk::AreaOf(xcb_window_t window) const {
    xcb_connection_t* connection = m_session->Connection();
    const auto size =
        OwnReply(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    const auto place = OwnReply(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, window, m_session->Root(), 0, 0),
        nullptr));
    if (!size || !place) {
        return {};
    }
    return {place->dst_x, place->dst_y, size->width, size->height};
}

Picture Desk::PictureOf(xcb_window_t window) const {
    xcb_connection_t* connection = m_session->Connection();
    const Area area = AreaOf(window);
    const auto image =
        OwnReply(xcb_get_image_reply(connection,
                                     xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0,
                                                   0, static_cast<std::uint16_t>(area.width),
                                                   static_cast<std::uint16_t>(area.height), ~0U),
                                     nullptr));
    if (!image) {
        return {};
    }
    const std::uint8_t* data = xcb_get_image_data(image.get());
    return {data, data + xcb_get_image_data_length(image.get())};
}

Picture Desk::RestingPicture(xcb_window_t window) const {
    Picture last;
    int same = 0;
    WaitUntil([&] {
        Picture now = PictureOf(window);
        same = now == last && !now.empty() ? same + 1 : 0;
        last = std::move(now);
        std::this_thread::sleep_for(50ms);
        return same == 4;
    });
    return last;
}

bool Desk::HasMenu() const {
    xcb_connection_t* connection = m_session->Connection();
    const auto tree = OwnReply(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, m_session->Root()), nullptr));
    if (!tree) {
        return false;
    }
    const xcb_window_t* const begin = xcb_query_tree_children(tree.get());
    return std::any_of(
        begin, begin + xcb_query_tree_children_length(tree.get()), [&](xcb_window_t window) {
            const auto attributes = OwnReply(xcb_get_window_attributes_reply(
                connection, xcb_get_window_attributes(connection, window), nullptr));
            const auto name = OwnReply(xcb_get_property_reply(
                connection,
                xcb_get_property(connection, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 1),
                nullptr));
            return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                   attributes->override_redirect != 0 && name && name->value_len > 0;
        });
}

std::vector<std::string> Desk::AtomsOf(xcb_window_t window, const std::string& property) const {
    xcb_connection_t* connection = m_session->Connection();
    const auto reply = OwnReply(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, 0, window, m_session->Atom(property), XCB_ATOM_ATOM, 0, 64),
        nullptr));
    std::vector<std::string> names;
    if (!reply || reply->format != 32) {
        return names;
    }
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    for (std::uint32_t index = 0; index < reply->value_len; ++index) {
        const auto name = OwnReply(xcb_get_atom_name_reply(
            connection, xcb_get_atom_name(connection, atoms[index]), nullptr));
        if (name) {
            names.emplace_back(xcb_get_atom_name_name(name.get()),
                               static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get())));
        }
    }
    return names;
}

void Desk::MoveMouse(Place onScreen) const {
    xcb_test_fake_input(m_session->Connection(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                        m_session->Root(), static_cast<std::int16_t>(onScreen.x),
                        static_cast<std::int16_t>(onScreen.y), 0);
    m_session->Sync();
}

void Desk::MoveMouse(xcb_window_t window, Place inWindow) const {
    const Area area = AreaOf(window);
    MoveMouse({area.x + inWindow.x, area.y + inWindow.y});
}

void Desk::Button(int button, bool down) const {
    xcb_test_fake_input(m_session->Connection(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE,
                        static_cast<std::uint8_t>(button), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    // Later events can overtake a press that is held back: the release would happen where the mouse
    // is by then, and the next press would be lost.
    EXPECT_TRUE(m_session->SyncWindowManager());
}

void Desk::PressButton(int button) const {
    Button(button, true);
    Button(button, false);
}

void Desk::Click(xcb_window_t window, Place inWindow) const {
    MoveMouse(window, inWindow);
    PressButton();
}

void Desk::Hold(std::uint32_t keysym, bool down) const {
    m_session->FakeKey(m_session->KeycodeOf(keysym), down);
}

void Desk::Tap(std::uint32_t keysym) const {
    Hold(keysym, true);
    Hold(keysym, false);
}

void Desk::Type(std::string_view text) const {
    for (const char character : text) {
        if (character == '+') {
            Hold(XKB_KEY_Shift_L, true);
            Tap(XKB_KEY_equal);
            Hold(XKB_KEY_Shift_L, false);
        } else {
            Tap(static_cast<std::uint32_t>(character));
        }
    }
}

void Desk::AskToClose(xcb_window_t window) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_session->Atom("_NET_CLOSE_WINDOW");
    message.data.data32[1] = 2;  // asked for by the user
    xcb_send_event(m_session->Connection(), 0, m_session->Root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    m_session->Sync();
}

}  // namespace spellwick::testing_support
