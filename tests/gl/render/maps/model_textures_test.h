#pragma once

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>

#include "gltextures/textures/texture_stores.h"
#include "model/texture.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/pictures.h"

namespace ulk_test {

/// Base of tests of the maps of a model: empty stores before and after, and a folder with a scene that needs
/// not be there.
class model_textures_test : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        libgr::clear_texture_stores();
    }
    void TearDown() override {
        libgr::clear_texture_stores();
        glBindTexture(GL_TEXTURE_2D, 0);
        gl_test::TearDown();
    }

    bool open(ulk3d::texture_t& which) const { return which.open(scene.c_str()); }
    /// What an open that fails says.
    std::string words_of_failure(ulk3d::texture_t& which) const {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(open(which));
        return errors.text();
    }
    std::string words(ulk3d::texture_t& which) const {
        const captured_stream errors(std::cerr);
        EXPECT_TRUE(open(which));
        return errors.text();
    }

    /// Writes a picture of four rows whose file ends behind the second one.
    std::string write_cut_picture() const {
        const std::string path = write_picture(folder, "cut.bmp", plain_picture(4, 4, {255, 0, 0}));
        std::filesystem::resize_file(path, 54 + 2 * 12);
        return path;
    }

    static libgr::texture_entry_t& entry_of(std::uint32_t handle) {
        EXPECT_NE(handle, 0U);
        return *libgr::model_textures.get(handle);
    }

    /// A parameter of the texture of a handle, which stays bound.
    static GLint parameter(std::uint32_t handle, GLenum name) {
        entry_of(handle).object.Load();
        GLint value = -1;
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
        return value;
    }
    static GLint level_parameter(std::uint32_t handle, GLint level, GLenum name) {
        entry_of(handle).object.Load();
        GLint value = -1;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, name, &value);
        return value;
    }

    temporary_folder_t folder;
    std::string scene = folder.path("scene.ulk");
    ulk3d::texture_t texture;
};

}  // namespace ulk_test
