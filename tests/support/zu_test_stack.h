// zu_test_stack.h: threads with as much stack as the library must make do with.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>

inline void runOnSmallStack( const std::function<void()> &body )
{
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init( &attributes );
    ASSERT_EQ( pthread_attr_setstacksize( &attributes, 128 * 1024 ), 0 );
    auto run = []( void *argument ) -> void * {
        ( *(const std::function<void()> *)argument )();
        return nullptr;
    };
    ASSERT_EQ( pthread_create( &thread, &attributes, run, const_cast<std::function<void()> *>( &body ) ), 0 );
    pthread_join( thread, nullptr );
    pthread_attr_destroy( &attributes );
}
