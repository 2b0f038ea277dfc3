#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/texture_stores.h"
#include "render/offscreen/offscreen_context.h"

namespace libgr {
namespace {

using ulk_test::bytes_t;
using ulk_test::plain_image;
using ulk_test::stored_bytes;

class TextureStores : public ulk_test::texture_test {
  protected:
    void TearDown() override {
        clear_texture_stores();
        glBindTexture(GL_TEXTURE_2D, 0);
        glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
        texture_test::TearDown();
    }

    /// Puts a picture of one pixel into the store; its entry.
    static texture_entry_t& add_picture(const std::string& name) {
        texture_entry_t& entry = *model_textures.get(model_textures.insert(name, {}));
        entry.image = plain_image(1, 1, {1, 2, 3, 4});
        entry.content.set_level(entry.image, 0, 0);
        entry.object.Set(&entry.content);
        return entry;
    }

    static cube_entry_t& add_cube(const std::string& name) {
        cube_entry_t& entry = *cube_textures.get(cube_textures.insert(name, {}));
        entry.images.fill(plain_image(1, 1, {1, 2, 3, 4}));
        entry.content.set_level(entry.images, 0, 0);
        entry.object.Set(&entry.content);
        return entry;
    }
};

TEST_F(TextureStores, EntriesStayUsableWhenOthersCome) {
    texture_entry_t& first = add_picture("first");
    for (int i = 0; i < 100; ++i)
        add_picture(std::to_string(i));
    first.object.Load();
    first.object.Reload();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D), (bytes_t{1, 2, 3, 4}));
}

TEST_F(TextureStores, ClearDeletesTheNames) {
    const GLuint picture = add_picture("picture").object.texture_id();
    const GLuint cube = add_cube("cube").object.texture_id();
    clear_texture_stores();
    EXPECT_FALSE(glIsTexture(picture));
    EXPECT_FALSE(glIsTexture(cube));
    EXPECT_EQ(model_textures.find("picture"), 0U);
    EXPECT_EQ(cube_textures.find("cube"), 0U);
}

TEST_F(TextureStores, ClearWithoutAContextLetsGoOfTheNames) {
    add_picture("picture");
    add_cube("cube");
    ulk3d::offscreen_context_t::make_none_current();
    clear_texture_stores();
    ASSERT_TRUE(ulk_test::make_gl_context_current());
    EXPECT_EQ(model_textures.find("picture"), 0U);
}

class TextureStoresDeathTest : public TextureStores {
  protected:
    void SetUp() override {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        TextureStores::SetUp();
    }
};

/// Registered before the hook, so it runs after it.
void tell_what_is_left() {
    std::cerr << "left: " << model_textures.slots.size() + cube_textures.slots.size() << std::endl;
}

TEST_F(TextureStoresDeathTest, AreEmptiedAtExitWithAContext) {
    EXPECT_EXIT(
        {
            std::atexit(tell_what_is_left);
            clear_texture_stores_at_exit();
            add_picture("picture");
            add_cube("cube");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "left: 0");
}

TEST_F(TextureStoresDeathTest, AreEmptiedAtExitWithoutAContext) {
    EXPECT_EXIT(
        {
            std::atexit(tell_what_is_left);
            clear_texture_stores_at_exit();
            clear_texture_stores_at_exit();
            add_picture("picture");
            add_cube("cube");
            ulk3d::offscreen_context_t::make_none_current();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "left: 0");
}

}  // namespace
}  // namespace libgr
